// All controllers' screens side by side.

import { atNextFrame, byId, make } from "./dom.js";
import { fittingCell, Leds } from "./leds.js";

const LARGEST_CELL = 16, MIDDLING_CELL = 4, BEZEL = 16; // pixels
const FRAME_WIDTH = 36, FRAME_HEIGHT = 100, NARROWEST = 300, LOWEST = 240; // of tiles; the room in the lowest

export class Wall {
  #tiles = [];
  #shape = 1; // height by width of a tile
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
    const most = (side) => MIDDLING_CELL * Math.max(...controllers.map(({ size }) => size[side]));
    this.#shape = (most(1) + FRAME_HEIGHT) / (most(0) + FRAME_WIDTH);
    this.#layOut();
    this.#tiles[seen]?.link.focus();
  }

  add(picture, controller) {
    Object.assign(this.#tiles[controller], { picture, changed: true });
    this.#wake();
  }

  // All tiles are in sight as far as they can be.
  #layOut() {
    const tiles = byId("tiles"), count = this.#tiles.length;
    const width = tiles.clientWidth, height = innerHeight - tiles.offsetTop;
    const ideal = Math.ceil(Math.sqrt((count * this.#shape * width) / height));
    const columns = Math.max(1, Math.min(ideal, Math.floor(width / NARROWEST), count));
    tiles.style.setProperty("--columns", columns);
    this.#room = Math.max(LOWEST, height / Math.ceil(count / columns) - FRAME_HEIGHT);
    for (const tile of this.#tiles) tile.changed = tile.picture !== null;
    this.#wake();
  }

  // Those that are out of sight follow when they are scrolled to.
  #draw() {
    for (const tile of this.#tiles) {
      const { canvas, leds, picture } = tile;
      if (!tile.changed || !canvas.checkVisibility({ contentVisibilityAuto: true })) continue;
      leds.cell = fittingCell(picture, canvas.parentElement.clientWidth - BEZEL, this.#room, LARGEST_CELL);
      leds.draw(picture);
      tile.changed = false;
    }
  }
}
