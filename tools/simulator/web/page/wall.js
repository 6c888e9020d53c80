// All controllers' screens side by side.

import { atNextFrame, byId, make } from "./dom.js";
import { fittingCell, Leds } from "./leds.js";

const LARGEST_CELL = 16, DOTS_FROM = 3, BEZEL = 16; // pixels
const FRAME_WIDTH = 30, FRAME_HEIGHT = 100, NARROWEST = 300, LOWEST = 240; // of tiles; the room in the lowest

export class Wall {
  #tiles = [];
  #largest = [1, 1]; // width and height, of the screens
  #room = LOWEST; // for the height of a picture
  #wake = atNextFrame(() => this.#draw());

  constructor() {
    addEventListener("scroll", this.#wake);
    addEventListener("resize", () => this.#layOut());
  }

  // `seen` is the number of the controller that one comes from.
  show(controllers, seen) {
    this.#tiles = controllers.map(({ name, address, port, size }, number) => {
      const canvas = make("canvas", { width: size[0], height: size[1], ariaHidden: true });
      const link = make("a", { href: `?controller=${number}` }, make("span", { className: "dark" }, canvas),
        make("span", { className: "name" }, name), make("span", { className: "note" }, `${address}:${port}`));
      return { link, canvas, leds: new Leds(canvas), picture: null, changed: false };
    });
    byId("tiles").replaceChildren(...this.#tiles.map(({ link }) => make("li", {}, link)));
    this.#largest = [0, 1].map((side) => Math.max(...controllers.map(({ size }) => size[side])));
    this.#layOut();
    this.#tiles[seen]?.link.focus();
  }

  add(picture, controller) {
    Object.assign(this.#tiles[controller], { picture, changed: true });
    this.#wake();
  }

  // As many columns as leave LEDs their dots, and fewer where all tiles are in sight then, too.
  #layOut() {
    const tiles = byId("tiles"), count = this.#tiles.length, [widest, highest] = this.#largest;
    const width = tiles.clientWidth, height = innerHeight - tiles.offsetTop;
    const cell = (columns) => Math.floor((width / columns - FRAME_WIDTH) / widest);
    const fits = (columns) => Math.ceil(count / columns) * (cell(columns) * highest + FRAME_HEIGHT) <= height;
    let columns = Math.max(1, Math.min(Math.floor(width / NARROWEST), count));
    while (columns > 1 && (cell(columns) < DOTS_FROM || fits(columns - 1))) columns -= 1;
    tiles.style.setProperty("--columns", columns);
    this.#room = Math.max(LOWEST, height / Math.ceil(count / columns) - FRAME_HEIGHT);
    for (const tile of this.#tiles) tile.changed = tile.picture !== null;
    this.#wake();
  }

  #draw() { // those that are out of sight follow when they are scrolled to
    for (const tile of this.#tiles) {
      const { canvas, leds, picture } = tile;
      if (!tile.changed || !canvas.checkVisibility({ contentVisibilityAuto: true })) continue;
      leds.cell = fittingCell(picture, canvas.parentElement.clientWidth - BEZEL, this.#room, LARGEST_CELL);
      leds.draw(picture);
      tile.changed = false;
    }
  }
}
