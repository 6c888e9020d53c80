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

// Reads a row of colours, or of indices of `depth` bits, from the high bits of each byte on.
function readRow(reader, row, depth, palette) {
  if (!palette) return row.forEach((_, i) => (row[i] = reader.color()));
  const mask = (1 << depth) - 1;
  for (let i = 0, shift = 0, byte = 0; i < row.length; ++i) {
    if (shift === 0) [byte, shift] = [reader.u8(), 8];
    shift -= depth;
    row[i] = palette[(byte >> shift) & mask];
  }
}

// The picture after a message, and its controller's number. `before` has each controller's last one.
export function read(message, before) {
  const reader = new Reader(message);
  const controller = reader.u8() === 2 ? reader.u16() : 0;
  const [width, height, x, y, w, h] = Array.from({ length: 6 }, () => reader.u16());
  const depth = reader.u8();
  const palette = depth <= 8 ? Array.from({ length: reader.u16() }, () => reader.color()) : null;

  const old = before.get(controller), goesOn = old?.width === width && old.height === height;
  const pixels = goesOn ? old.pixels.slice() : new Uint32Array(width * height).fill(BLACK);
  for (let row = y; row < y + h; ++row)
    readRow(reader, pixels.subarray(row * width + x).subarray(0, w), depth, palette);
  const picture = { width, height, pixels };
  before.set(controller, picture);
  return [picture, controller];
}

// "#RRGGBB" of an LED.
export function colorAt(picture, x, y) {
  const [, blue, green, red] = picture.pixels[y * picture.width + x].toString(16).match(/../g);
  return `#${red}${green}${blue}`.toUpperCase();
}
