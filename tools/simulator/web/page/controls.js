// What can be done to the controller besides sending it commands.

import { ask, byId, make } from "./dom.js";

// The clocks are local ones; in here they are reckoned as if they were UTC.
const textOf = (time) => new Date(time).toISOString().slice(0, 19).replace("T", " ");

export class Controls {
  #number = 0;
  #clock = null; // the controller's, in ms, at #since
  #since = 0;
  #rate = 1;

  constructor() {
    const power = byId("power");
    power.addEventListener("click", () => this.#post("power", { power: power.ariaChecked !== "true" }, "Switched"));
    byId("reset").addEventListener("click", () => this.#post("reset", {}, "Restarted"));
    byId("fault-kind").addEventListener("change", () => this.#setFault());
    byId("clock-now").addEventListener("click", () => {
      byId("clock").value = textOf(Date.now() - new Date().getTimezoneOffset() * 60000);
      byId("clock-rate").value = 1;
    });
    byId("clock-form").addEventListener("submit", (event) => {
      event.preventDefault();
      const clock = byId("clock").value, rate = Number(byId("clock-rate").value);
      this.#post("clock", clock ? { clock, rate } : { rate }, "Clock set");
    });
    setInterval(() => this.#tick(), 250);
  }

  show(number, { power, clock, rate = 1, fault = {} }) {
    [this.#number, this.#rate] = [number, rate];
    [this.#clock, this.#since] = [Date.parse(`${clock.replace(" ", "T")}Z`), performance.now()];
    byId("power").ariaChecked = power;
    if (!byId("fault-kind").contains(document.activeElement))
      for (const id of ["fault", "after", "delay"]) byId(id).value = fault[id] ?? byId(id).value;
    this.#tick();
  }

  #setFault() {
    const [fault, after, delay] = ["fault", "after", "delay"].map((id) => byId(id).value);
    if (fault === "none") this.#post("fault", { fault }, "Answers are good");
    else this.#post("fault", { fault, after: Number(after), delay: Number(delay) }, `Fault set: ${fault}`);
  }

  async #post(what, body, done) {
    const options = { method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) };
    const [words, className] = await ask(`/api/${what}?controller=${this.#number}`, options)
      .then(() => [done, "good"], (error) => [error.message, "bad"]);
    byId("result").replaceChildren(make("span", { className }, words));
  }

  #tick() {
    const clock = byId("clock-text");
    if (clock && this.#clock) clock.textContent = textOf(this.#clock + (performance.now() - this.#since) * this.#rate);
  }
}
