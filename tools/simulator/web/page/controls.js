// What can be done to the controller besides sending it commands.

import { byId, post } from "./dom.js";

// The clocks are local ones; in here they are reckoned as if they were UTC.
const textOf = (time) => new Date(time).toISOString().slice(0, 19).replace("T", " ");

export class Controls {
  #number = 0;
  #clock = null; // tells the controller's time, in ms

  constructor() {
    byId("power").addEventListener("click", ({ currentTarget: { ariaChecked } }) =>
      this.#post("power", { power: ariaChecked !== "true" }, "Switched"));
    byId("reset").addEventListener("click", () => this.#post("reset", {}, "Restarted"));
    byId("fault-form").addEventListener("change", ({ target }) => this.#setFault(target));
    byId("clock-now").addEventListener("click", () => {
      const now = Date.now() - new Date().getTimezoneOffset() * 60000;
      this.#post("clock", { clock: textOf(now), rate: 1 }, "Set to now");
    });
    byId("clock-form").addEventListener("submit", (event) => {
      event.preventDefault();
      const clock = byId("clock").value, rate = Number(byId("clock-rate").value);
      this.#post("clock", clock ? { clock, rate } : { rate }, clock ? "Set" : `Runs at ${rate} ×`);
    });
    byId("controls").addEventListener("invalid", () => this.clear(), true);
    setInterval(() => this.#tick(), 250);
  }

  clear() {
    for (const result of byId("controls").querySelectorAll("output")) result.textContent = "";
  }

  show(number, { power, clock, rate, fault }) {
    const then = Date.parse(`${clock.replace(" ", "T")}Z`), since = performance.now();
    this.#clock = () => then + (performance.now() - since) * rate;
    this.#number = number;
    byId("power").ariaChecked = power;
    const { activeElement } = document; // what is being filled in stays
    if (activeElement !== byId("clock-rate")) byId("clock-rate").value = rate;
    if (!byId("fault-form").contains(activeElement))
      for (const id of ["fault", "after", "delay"]) byId(id).value = fault[id] ?? byId(id).value;
    this.#tick();
  }

  #setFault({ id }) {
    const [fault, after, delay] = ["fault", "after", "delay"].map((each) => byId(each).value);
    if (fault !== "none") this.#post("fault", { fault, after: Number(after), delay: Number(delay) }, `Set: ${fault}`);
    else if (id === "fault") this.#post("fault", { fault }, "Answers are good");
  }

  async #post(what, body, done) {
    this.clear();
    const [textContent, className] = await post(`/api/${what}?controller=${this.#number}`, body)
      .then(() => [done, "good"], (error) => [error.message, "bad"]);
    Object.assign(byId(`${what}-result`), { textContent, className });
  }

  #tick() {
    if (this.#clock) byId("clock-text").textContent = textOf(this.#clock());
  }
}
