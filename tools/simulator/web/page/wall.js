// All controllers' screens side by side.

import { byId, make } from "./dom.js";
import { fittingCell, Leds } from "./leds.js";

const LARGEST_CELL = 4, HIGHEST = 240, BEZEL = 16; // pixels

export class Wall {
  #tiles = [];
  #changed = new Map(); // pictures by controller, those of tiles that are out of sight, too
  #asked = false;

  constructor() {
    for (const event of ["scroll", "resize"]) addEventListener(event, () => this.#wake());
  }

  show(controllers) {
    this.#tiles = controllers.map(({ name, address, port, size }, number) => {
      const canvas = make("canvas", { width: size[0], height: size[1], ariaHidden: true });
      const link = make("a", { href: `?controller=${number}` }, make("span", { className: "dark" }, canvas),
        make("span", { className: "name" }, name), make("span", { className: "note" }, `${address}:${port}`));
      return { item: make("li", {}, link), canvas, leds: new Leds(canvas) };
    });
    byId("tiles").replaceChildren(...this.#tiles.map(({ item }) => item));
  }

  add(picture, controller) {
    this.#changed.set(controller, picture);
    this.#wake();
  }

  #wake() {
    if (!this.#asked) requestAnimationFrame(() => this.#draw());
    this.#asked = true;
  }

  #draw() {
    this.#asked = false;
    for (const [controller, picture] of this.#changed) {
      const { leds, canvas } = this.#tiles[controller];
      if (!canvas.checkVisibility({ contentVisibilityAuto: true })) continue;
      leds.cell = fittingCell(picture, canvas.parentElement.clientWidth - BEZEL, HIGHEST, LARGEST_CELL);
      leds.draw(picture);
      this.#changed.delete(controller);
    }
  }
}
