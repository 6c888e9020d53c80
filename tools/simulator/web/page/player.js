// Shows pictures as they come, and keeps the last ones, so that one can stop, step, and look slowly at what has
// just been.

const KEPT_BYTES = 48e6;

export class Player {
  speed = 1; // of the time that is shown; 0: it stands
  #at = null; // what time is shown, in ms; null: the present
  #kept = []; // { time, picture }
  #bytes = 0;
  #seen = null;
  #asked = false;
  #last = 0;

  // show(picture) is called with each one that is to be seen, tell() when the time or speed have changed.
  constructor(show, tell) {
    [this.show, this.tell] = [show, tell];
  }

  get live() { return this.#at === null; }
  get length() { return this.#newest - this.#oldest; } // of what is kept, in ms
  get position() { return (this.#at ?? this.#newest) - this.#oldest; } // in it

  add(picture) {
    this.#kept.push({ time: performance.now(), picture });
    this.#bytes += picture.pixels.byteLength;
    while (this.#bytes > KEPT_BYTES && this.#kept.length > 2)
      this.#bytes -= this.#kept.shift().picture.pixels.byteLength;
    this.#wake();
  }

  clear() {
    [this.#kept, this.#bytes] = [[], 0];
    this.play(1);
  }

  play(speed) { this.#go(speed === 1 ? null : this.#at ?? this.#newest, speed); }
  pause() { this.#go(this.#at ?? this.#newest, 0); }
  seek(position) { this.#go(this.#oldest + position, 0); }

  step(by) {
    const index = this.#kept.indexOf(this.#current) + by;
    if (this.#kept.length) this.#go(this.#kept[Math.max(0, Math.min(index, this.#kept.length - 1))].time, 0);
  }

  get #oldest() { return this.#kept[0]?.time ?? 0; }
  get #newest() { return this.#kept.at(-1)?.time ?? 0; }
  get #current() { return this.#kept.findLast(({ time }) => this.live || time <= this.#at) ?? this.#kept[0]; }

  #go(at, speed) {
    [this.#at, this.speed] = [at, speed];
    this.#wake();
  }

  #wake() {
    if (!this.#asked) requestAnimationFrame((now) => this.#tick(now));
    this.#asked = true;
  }

  #tick(now) {
    const passed = Math.min(now - this.#last, 100);
    [this.#asked, this.#last] = [false, now];
    if (!this.live) {
      this.#at = Math.max(this.#oldest, Math.min(this.#at + passed * this.speed, this.#newest));
      if (this.speed > 0 && this.#at < this.#newest) this.#wake();
    }
    const picture = this.#current?.picture;
    if (picture && picture !== this.#seen) this.show(this.#seen = picture);
    this.tell();
  }
}
