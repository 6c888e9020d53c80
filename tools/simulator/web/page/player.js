// Shows pictures as they come, and keeps the last ones to be looked at again, slowly or in steps.

import { atNextFrame } from "./dom.js";

const PAST = 64e6, MOST = 128e6; // bytes kept; beyond the past only what comes while one looks at it

export class Player {
  speed = 1; // of the time that is shown; 0: it stands
  #at = null; // what time is shown, in ms; null: the present
  #kept = []; // { time, picture }
  #latest = 0; // when the last one came, kept or not
  #seen = null;
  #wake = atNextFrame((now) => this.#tick(now));
  #last = 0;

  // show(picture) is called with each one that is to be seen, tell() when the time or speed have changed.
  constructor(show, tell) {
    [this.show, this.tell] = [show, tell];
  }

  get live() { return this.#at === null; }
  get behind() { return this.live ? 0 : this.#latest - this.#at; } // the present, in ms
  get oldest() { return this.#kept[0]?.time ?? 0; } // the time of the first one that is kept
  get newest() { return this.#kept.at(-1)?.time ?? 0; }
  get shown() { return this.#at ?? this.newest; }

  // When nothing more fits, what is looked at stays, and what comes is not kept.
  add(picture) {
    const time = this.#latest = performance.now(), bytes = picture.pixels.byteLength;
    if (this.live || this.#kept.length < MOST / bytes) this.#kept.push({ time, picture });
    while (this.live && this.#kept.length > PAST / bytes + 1) this.#kept.shift();
    if (this.live && this.speed !== 1) this.#at = time;
    this.#wake();
  }

  clear() {
    this.#kept = [];
    this.catchUp();
  }

  catchUp() { this.#go(null, 1); }
  play(speed) { this.#go(this.live && speed === 1 ? null : this.shown, speed); }
  seek(time) { this.#go(time, 0); }

  step(by) {
    const index = this.#kept.indexOf(this.#current) + by;
    if (this.#kept.length) this.#go(this.#kept[Math.max(0, Math.min(index, this.#kept.length - 1))].time, 0);
  }

  get #current() { return this.#kept.findLast(({ time }) => this.live || time <= this.#at) ?? this.#kept[0]; }

  #go(at, speed) {
    [this.#at, this.speed] = [at, speed];
    this.#wake();
  }

  #tick(now) {
    const passed = Math.min(now - this.#last, 100);
    this.#last = now;
    if (!this.live && this.speed > 0) this.#goOn(passed * this.speed);
    const picture = this.#current?.picture;
    if (picture && picture !== this.#seen) this.show(this.#seen = picture);
    this.tell();
  }

  // At the end of what is kept the present follows, slowly only while none of it is missing.
  #goOn(by) {
    this.#at = Math.min(this.#at + by, this.newest);
    if (this.#at < this.newest) this.#wake();
    else if (this.speed === 1 || this.#latest > this.newest) this.#at = null;
  }
}
