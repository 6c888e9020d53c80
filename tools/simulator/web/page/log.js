// The commands that have come in, the newest first.

import { byId, make } from "./dom.js";

const KEPT = 1000;
const KINDS = [ // the first that matches; the last one takes what is left
  ["Trouble", /^bad frame|not answered|\(fault: /], ["Handshakes", /^handshake/],
  ["Areas", /dynamic area/], ["Speech", /sound/],
  ["Programs and files", /^(no )?program\b(?! lock)|write|read|transfer|directory|delete|format|memory|firmware/],
  ["Questions", /^(ping|status|network search|battle time)\b/],
  ["Settings", /./],
];

// Offsets, bytes and characters of a frame.
function dump(hex) {
  const count = matchMedia("(max-width: 599px)").matches ? 8 : 16; // in a line
  const lines = (hex.toLowerCase().match(RegExp(`.{1,${2 * count}}`, "g")) ?? []).map((line, number) => {
    const bytes = line.match(/../g);
    const text = bytes.map((byte) => String.fromCharCode(parseInt(byte, 16))).join("").replaceAll(/[^ -~]/g, "·");
    return `${(count * number).toString(16).padStart(4, "0")}  ${bytes.join(" ").padEnd(3 * count)} ${text}`;
  });
  return lines.join("\n") || "No bytes belong to this line.";
}

// Nobody asked for what has no peer.
function verdict({ status, peer }) {
  if (status === null && peer) return make("span", { className: "badge warn" }, "no answer");
  return status ? make("span", { className: "badge bad" }, `refused ${status}`) : null;
}

function itemOf(entry) {
  const [request, ...result] = entry.command.split(": ");
  const summary = make("summary", { tabIndex: -1 },
    make("time", { title: entry.time }, entry.time.slice(11, 23)),
    make("span", { className: "words" }, request, make("span", { className: "result" }, result.join(": "))),
    verdict(entry), make("span", { className: "peer" }, entry.peer));
  const details = make("details", {}, summary);
  details.addEventListener("toggle", () => {
    details.append(make("pre", {}, dump(entry.bytes)));
    byId("entries").scrollTop ||= 1; // from here on browsers hold what is seen in its place
  }, { once: true });
  const item = make("li", {}, details);
  item.dataset.kind = entry.status ? "Trouble" : KINDS.find(([, words]) => words.test(entry.command))[0];
  return item;
}

export class Log {
  #list = byId("entries");
  #hidden = new Set(["Handshakes"]);

  constructor() {
    for (const [kind] of KINDS.toReversed()) byId("kinds").append(this.#switchFor(kind));
    this.#list.addEventListener("keydown", (event) => this.#go(event));
  }

  clear() { this.#list.replaceChildren(); }

  add(entries) {
    const items = entries.slice(-KEPT).map(itemOf).reverse();
    for (const item of items) item.hidden = this.#hidden.has(item.dataset.kind);
    this.#list.prepend(...items);
    while (this.#list.children.length > KEPT) this.#list.lastChild.remove();
  }

  #switchFor(kind) {
    const button = make("button", { className: "chip", ariaPressed: !this.#hidden.has(kind) }, kind);
    button.addEventListener("click", () => {
      if (!this.#hidden.delete(kind)) this.#hidden.add(kind);
      button.ariaPressed = !this.#hidden.has(kind);
      for (const item of this.#list.children) item.hidden = this.#hidden.has(item.dataset.kind);
    });
    return button;
  }

  // The list is reached by Tab, its entries from there by the arrow keys.
  #go(event) {
    const shown = [...this.#list.querySelectorAll("li:not([hidden]) summary")];
    const next = shown[shown.indexOf(document.activeElement) + { ArrowDown: 1, ArrowUp: -1 }[event.key]];
    if (!next) return;
    event.preventDefault();
    next.focus();
  }
}
