// One controller's screen, and what one can do with its picture.

import { ask, byId, download, make } from "./dom.js";
import { fittingCell, Leds } from "./leds.js";
import { colorAt } from "./picture.js";
import { Player } from "./player.js";

const LARGEST = 8192; // pixels of the canvas, each way
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
const toggle = (button) => (button.ariaPressed = button.ariaPressed !== "true"); // whether it is pressed now

export class Stage {
  #canvas = byId("screen");
  #leds = new Leds(this.#canvas);
  #player = new Player((picture) => this.#draw(picture), () => this.#tell());
  #picture = null;
  #outlines = [];
  #cursor = null; // the LED that is told about
  #number = 0;
  #width = 1;
  #height = 1;
  #recording = null;
  #came = 0; // pictures, in this second

  constructor() {
    this.#bindPlaying();
    this.#bindLooks();
    this.#bindPointing();
    byId("record").addEventListener("click", () => this.#record());
    byId("save").addEventListener("click", () => this.#canvas.toBlob((blob) => download(blob, "png")));
    setInterval(() => {
      byId("rate").textContent = this.#came ? `${this.#came} fps` : "";
      this.#came = 0;
    }, 1000);
  }

  begin(number, [width, height]) {
    [this.#number, this.#width, this.#height, this.#picture] = [number, width, height, null];
    this.#player.clear();
  }

  add(picture) {
    this.#came++;
    this.#player.add(picture);
  }

  outline(outlines) {
    this.#outlines = outlines;
    byId("outlines").replaceChildren(...outlines.map((area) => this.#boxOf(area)));
    this.#point();
  }

  #bindPlaying() {
    const player = this.#player;
    const play = () => player.play(Number(byId("speed").value));
    byId("pause").addEventListener("click", () => (player.speed ? player.pause() : play()));
    byId("back").addEventListener("click", () => player.step(-1));
    byId("step").addEventListener("click", () => player.step(1));
    byId("speed").addEventListener("change", play);
    byId("scrub").addEventListener("input", () => player.seek(Number(byId("scrub").value)));
    byId("now").addEventListener("click", () => {
      byId("speed").value = "1";
      player.play(1);
    });
  }

  #bindLooks() {
    const redraw = () => this.#picture && this.#draw(this.#picture);
    byId("zoom").addEventListener("change", redraw);
    byId("dots").addEventListener("click", ({ currentTarget }) => {
      this.#leds.dots = toggle(currentTarget);
      redraw();
    });
    byId("areas").addEventListener("click", ({ currentTarget }) => (byId("outlines").hidden = !toggle(currentTarget)));
    new ResizeObserver(redraw).observe(document.body);
  }

  #bindPointing() {
    this.#canvas.addEventListener("pointermove", ({ offsetX, offsetY }) => {
      const part = (offset, whole, count) => Math.max(0, Math.min(Math.floor((offset / whole) * count), count - 1));
      const { clientWidth, clientHeight } = this.#canvas;
      this.#point([part(offsetX, clientWidth, this.#width), part(offsetY, clientHeight, this.#height)]);
    });
    this.#canvas.addEventListener("keydown", (event) => {
      const by = ARROWS[event.key];
      if (!by) return;
      event.preventDefault();
      byId("readout").ariaLive = "polite";
      const [x, y] = this.#cursor ?? [-by[0], -by[1]];
      this.#point([(x + by[0] + this.#width) % this.#width, (y + by[1] + this.#height) % this.#height]);
    });
  }

  #draw(picture) {
    const { width, maxHeight } = getComputedStyle(byId("room"));
    const zoom = byId("zoom").value;
    this.#picture = picture;
    this.#leds.cell = zoom === "fit" ? fittingCell(picture, parseFloat(width), parseFloat(maxHeight))
      : fittingCell(picture, LARGEST, LARGEST, zoom);
    this.#canvas.classList.toggle("fit", zoom === "fit");
    this.#leds.draw(picture);
    byId("readout").ariaLive = "off"; // a running text would never let a screen reader come to an end
    this.#point();
  }

  #boxOf({ id, kind, rect: [x, y, w, h] }) {
    const box = make("div", { className: kind }, make("span", {}, String(id)));
    const [left, top] = [x / this.#width, y / this.#height];
    for (const [side, part] of Object.entries({ left, top, width: w / this.#width, height: h / this.#height }))
      box.style[side] = `${part * 100}%`;
    return box;
  }

  #point(cursor = this.#cursor) {
    if (!cursor || !this.#picture) return;
    const [x, y] = this.#cursor = cursor;
    const color = colorAt(this.#picture, x, y);
    const area = this.#outlines.findLast(({ rect }) =>
      x >= rect[0] && x < rect[0] + rect[2] && y >= rect[1] && y < rect[1] + rect[3]);
    const where = area ? `${area.kind === "dynamic" ? "dynamic area" : "area"} ${area.id}` : "no area";
    byId("readout").textContent = `Column ${x}, row ${y} · ${color} · ${where}`;
    byId("swatch").style.background = color;
  }

  #tell() {
    const { live, speed, length, position } = this.#player;
    const [icon, word] = speed ? ["#i-pause", "Pause"] : ["#i-play", "Play"];
    byId("pause").querySelector("use").setAttribute("href", icon);
    byId("pause").lastChild.textContent = word;
    const ariaValueText = live ? "Live" : `${((position - length) / 1000).toFixed(1).replace("-", "−")} s`;
    byId("now").textContent = ariaValueText;
    byId("now").classList.toggle("good", live);
    Object.assign(byId("scrub"), { max: Math.ceil(length) || 1, value: live ? 1e9 : position, ariaValueText });
  }

  async #record() {
    if (this.#recording) return this.#recording.abort();
    const button = byId("record"), words = button.lastChild;
    const path = `/api/recording.gif?controller=${this.#number}&seconds=${byId("seconds").value}`;
    this.#recording = new AbortController();
    [button.ariaPressed, words.textContent] = [true, "Stop"];
    await ask(path, this.#recording).then((answer) => answer.blob()).then(
      (blob) => [download(blob, "gif"), words.textContent = "GIF"],
      ({ name, message }) => (words.textContent = name === "AbortError" ? "GIF" : message));
    [button.ariaPressed, this.#recording] = [false, null];
  }
}
