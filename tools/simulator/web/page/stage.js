// One controller's screen, and what one can do with its picture.

import { ask, byId, download, make, post } from "./dom.js";
import { fittingCell, Leds } from "./leds.js";
import { colorAt } from "./picture.js";
import { Player } from "./player.js";

const LARGEST = 8192; // pixels of the canvas, each way
const NAMED = 3; // pixels of a cell from which on areas have their numbers
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

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

  constructor() {
    this.#bindPlaying();
    this.#bindLooks();
    this.#bindPointing();
    byId("record").addEventListener("click", () => this.#record());
    byId("save").addEventListener("click", () => this.#canvas.toBlob((blob) => download(blob, "png")));
  }

  begin(number, [width, height]) {
    [this.#number, this.#width, this.#height, this.#picture, this.#cursor] = [number, width, height, null, null];
    for (const option of byId("zoom").options) option.disabled = option.value * Math.max(width, height) > LARGEST;
    this.#player.clear();
  }

  add(picture) { this.#player.add(picture); }

  outline(outlines) {
    this.#outlines = outlines;
    byId("outlines").replaceChildren(...outlines.map((area, i) => this.#boxOf(area, i)));
    this.#point();
  }

  #bindPlaying() {
    const player = this.#player, play = () => player.play(Number(byId("speed").value));
    byId("pause").addEventListener("click", () => (player.speed ? player.play(0) : play()));
    byId("back").addEventListener("click", () => player.step(-1));
    byId("step").addEventListener("click", () => player.step(1));
    byId("speed").addEventListener("change", () => player.speed && play());
    byId("scrub").addEventListener("input", () => player.seek(Number(byId("scrub").value)));
    byId("now").addEventListener("click", () => player.catchUp());
  }

  #bindLooks() {
    const redraw = () => this.#picture && this.#draw(this.#picture);
    byId("zoom").addEventListener("change", redraw);
    for (const button of [byId("dots"), byId("areas")])
      button.addEventListener("click", () => {
        button.ariaPressed = button.ariaPressed !== "true";
        redraw();
      });
    new ResizeObserver(redraw).observe(document.body);
  }

  #bindPointing() {
    const part = (offset, whole, count) => Math.max(0, Math.min(Math.floor((offset / whole) * count), count - 1));
    for (const event of ["pointermove", "pointerdown"])
      this.#canvas.addEventListener(event, ({ offsetX, offsetY, target: { clientWidth, clientHeight } }) =>
        this.#point([part(offsetX, clientWidth, this.#width), part(offsetY, clientHeight, this.#height)]));
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
    const { width, maxHeight } = getComputedStyle(byId("room")), zoom = byId("zoom").value;
    this.#picture = picture;
    this.#leds.cell = zoom === "fit" ? fittingCell(picture, parseFloat(width), parseFloat(maxHeight))
      : fittingCell(picture, LARGEST, LARGEST, zoom);
    this.#leds.dots = byId("dots").ariaPressed === "true";
    this.#canvas.classList.toggle("fit", zoom === "fit");
    byId("outlines").classList.toggle("bare", this.#leds.cell < NAMED * devicePixelRatio);
    this.#leds.draw(picture);
    byId("readout").ariaLive = "off"; // a running text would never let a screen reader come to an end
    this.#point();
  }

  // Numbers of one corner stand side by side.
  #boxOf({ id, kind, rect: [x, y, w, h] }, i) {
    const label = make("span", {}, String(id)), box = make("div", { className: kind }, label);
    const before = this.#outlines.slice(0, i).filter(({ rect }) => rect[0] === x && rect[1] === y).length;
    label.style.left = `${2.6 * before}em`;
    const across = (part) => `${(100 * part) / this.#width}%`, down = (part) => `${(100 * part) / this.#height}%`;
    Object.assign(box.style, { left: across(x), top: down(y), width: across(w), height: down(h) });
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
    const { live, speed, oldest, newest, shown, behind } = this.#player;
    byId("pause").classList.toggle("on", speed > 0);
    if (live && Number(byId("speed").value) !== speed) byId("speed").value = speed;
    const ariaValueText = live ? "Live" : `−${(behind / 1000).toFixed(1)} s`;
    Object.assign(byId("now"), { textContent: ariaValueText, className: live ? "badge good" : "badge" });
    Object.assign(byId("scrub"), { min: oldest, max: newest, value: shown, ariaValueText });
  }

  // The second press ends the recording, which is answered then.
  async #record() {
    const button = byId("record"), query = `controller=${this.#number}`;
    const tell = ({ message }) => (byId("note").textContent = message);
    tell({ message: "" });
    if (button.classList.contains("on")) return post(`/api/recording?${query}`, {}).catch(tell);
    button.classList.add("on");
    await ask(`/api/recording.gif?${query}&seconds=${byId("seconds").value}`)
      .then((answer) => answer.blob()).then((blob) => download(blob, "gif")).catch(tell);
    button.classList.remove("on");
  }
}
