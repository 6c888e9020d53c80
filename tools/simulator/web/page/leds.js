// A picture as LEDs on a canvas: round dots that glow, or plain pixels. The middle of every cell has exactly
// the LED's colour.

import { make } from "./dom.js";

const SMALLEST_DOT = 3; // pixels of a cell; smaller ones are plain
const DOT = 0.42, GLOW = 0.5; // radius of a dot in cells; light that falls beside it
const PANEL = "#0e1216"; // between the dots

export class Leds {
  cell = 1; // pixels of the device, less than one where a screen is larger than its place
  dots = true;
  #context;
  #small = make("canvas"); // a pixel an LED
  #mask = null;
  #look = ""; // what the canvas is laid out for
  #drawn = []; // pixels

  constructor(canvas) { this.#context = canvas.getContext("2d"); }

  get #canvas() { return this.#context.canvas; }
  get #step() { return Math.ceil(this.cell); } // pixels of the canvas

  draw({ pixels, width, height }) {
    const look = [width, height, this.cell, this.dots, devicePixelRatio].join();
    if (look !== this.#look) this.#layOut(width, height, look);
    const light = new ImageData(new Uint8ClampedArray(pixels.buffer), width);
    this.#context.save();
    this.#clip(pixels, width);
    this.#enlarge(light, "copy", false);
    if (this.dots && this.cell >= SMALLEST_DOT) this.#roundOff(light);
    this.#context.restore();
  }

  #layOut(width, height, look) {
    Object.assign(this.#small, { width, height });
    Object.assign(this.#canvas, { width: width * this.#step, height: height * this.#step });
    this.#canvas.style.width = `${Math.floor(width * this.cell) / devicePixelRatio}px`;
    [this.#mask, this.#look, this.#drawn] = [this.#holes(), look, []];
  }

  // To the rows that have changed and those that their light falls on.
  #clip(pixels, width) {
    const differs = (color, at) => color !== this.#drawn[at];
    const top = Math.floor(pixels.findIndex(differs) / width) - 1;
    const bottom = Math.floor(pixels.findLastIndex(differs) / width) + 2;
    this.#context.beginPath();
    this.#context.rect(0, top * this.#step, this.#canvas.width, (bottom - top) * this.#step);
    this.#context.clip();
    this.#drawn = pixels;
  }

  #enlarge(image, operation, smooth) {
    this.#small.getContext("2d").putImageData(image, 0, 0);
    Object.assign(this.#context, { globalCompositeOperation: operation, imageSmoothingEnabled: smooth });
    this.#context.drawImage(this.#small, 0, 0, this.#canvas.width, this.#canvas.height);
  }

  // Leaves the dots; behind them the light of each one falls as far as its neighbours' middles.
  #roundOff(light) {
    const data = light.data.slice();
    for (let i = 0; i < data.length; i += 4) data[i + 3] = GLOW * Math.max(data[i], data[i + 1], data[i + 2]);
    this.#fill("destination-in", this.#mask);
    this.#enlarge(new ImageData(data, light.width), "destination-over", true);
    this.#fill("destination-over", PANEL);
  }

  #fill(operation, style) {
    Object.assign(this.#context, { globalCompositeOperation: operation, fillStyle: style });
    this.#context.fillRect(0, 0, this.#canvas.width, this.#canvas.height);
  }

  #holes() {
    const tile = make("canvas", { width: this.#step, height: this.#step });
    const context = tile.getContext("2d");
    context.arc(this.cell / 2, this.cell / 2, this.cell * DOT, 0, 2 * Math.PI);
    context.fill();
    return this.#context.createPattern(tile, "repeat");
  }
}

// The largest cell with which a picture fits: whole pixels of the device, or less than one.
export function fittingCell(picture, width, height, most = 16) {
  const room = Math.min(width / picture.width, height / picture.height) * devicePixelRatio;
  return Math.min(Math.floor(room) || room || 1, Math.ceil(most * devicePixelRatio));
}
