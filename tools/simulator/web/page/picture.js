// Pictures as they come over the wire: all of a screen, or what has changed since the one before.

const BLACK = 0xff000000; // red, green, blue and opacity, from the low byte on

class Reader {
  #view;
  #at = 0;
  constructor(message) { this.#view = new DataView(message); }
  u8() { return this.#view.getUint8(this.#at++); }
  u16() { return this.u8() | (this.u8() << 8); }
  color() { return (BLACK | this.u8() | (this.u8() << 8) | (this.u8() << 16)) >>> 0; }
}

// Reads a row of colours to a place among pixels.
function fullColors(reader) {
  return (pixels, at, count) => {
    for (let i = 0; i < count; ++i) pixels[at + i] = reader.color();
  };
}

// The same of indices of `depth` bits, from the high bits of each byte on.
function paletteColors(reader, depth) {
  const palette = Array.from({ length: reader.u16() }, () => reader.color());
  const mask = (1 << depth) - 1;
  return (pixels, at, count) => {
    for (let i = 0, shift = 0, byte = 0; i < count; ++i) {
      if (shift === 0) [byte, shift] = [reader.u8(), 8];
      shift -= depth;
      pixels[at + i] = palette[(byte >> shift) & mask];
    }
  };
}

// The controller's number, and its picture after the message. `before` has each controller's last one.
export function read(message, before) {
  const reader = new Reader(message);
  const controller = reader.u8() === 2 ? reader.u16() : 0;
  const [width, height, x, y, w, h] = Array.from({ length: 6 }, () => reader.u16());
  const depth = reader.u8();
  const readRow = depth <= 8 ? paletteColors(reader, depth) : fullColors(reader);

  const old = before.get(controller);
  const goesOn = old && old.width === width && old.height === height;
  const pixels = goesOn ? old.pixels.slice() : new Uint32Array(width * height).fill(BLACK);
  for (let row = y; row < y + h; ++row) readRow(pixels, row * width + x, w);
  const picture = { width, height, pixels };
  before.set(controller, picture);
  return { controller, picture };
}

// "#RRGGBB" of an LED.
export function colorAt(picture, x, y) {
  const [, blue, green, red] = picture.pixels[y * picture.width + x].toString(16).match(/../g);
  return `#${red}${green}${blue}`.toUpperCase();
}
