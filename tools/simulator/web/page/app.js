// Says what is to be seen, one controller or all of them, and brings it there.

import { ask, byId, make } from "./dom.js";
import { Controls } from "./controls.js";
import { listen } from "./live.js";
import { Log } from "./log.js";
import { screenOf, showState } from "./panels.js";
import { Stage } from "./stage.js";
import { Wall } from "./wall.js";

const stage = new Stage(), log = new Log(), controls = new Controls(), wall = new Wall();
let controllers = [], number = null; // null: all of them
let missing = ""; // one that was asked for and is not there

const tellLink = (className, textContent) => Object.assign(byId("link"), { className, textContent });

function tellWho(name, facts) {
  byId("facts").replaceChildren(...[missing, ...facts].filter(Boolean).map((fact) => make("span", {}, fact)));
  document.title = byId("title").textContent = name;
}

function chosen() {
  const asked = new URLSearchParams(location.search).get("controller");
  if (controllers[Number(asked ?? NaN)]) return Number(asked);
  if (asked !== null) missing = `there is no controller ${asked}`;
  history.replaceState(null, "", "/");
  return controllers.length > 1 ? null : 0;
}

function showOne() {
  const { name, address, port, type, size } = controllers[number];
  const place = `${address}:${port}`;
  const unnamed = controllers.length === 1 && name === "controller-1";
  tellWho(unnamed ? "qm_simulator" : name, [screenOf(controllers[number]), place, type]);
  byId("screen").ariaLabel = `Screen of ${size[0]} by ${size[1]} LEDs`;
  byId("try").textContent = `qmctl -c ${place} text Hello`;
  stage.begin(number, size);
  log.clear();
  controls.clear();
  sessionStorage.setItem("seen", number);
}

function showAll() {
  tellWho("All screens", [`${controllers.length} controllers`]);
  wall.show(controllers, sessionStorage.getItem("seen"));
  sessionStorage.removeItem("seen");
}

// After a restart of the simulator there may be others.
async function begin() {
  controllers = await (await ask("/api/controllers", { signal: AbortSignal.timeout(5000) })).json();
  number = chosen();
  const all = number === null;
  [byId("wall").hidden, byId("one").hidden, byId("to-wall").hidden] = [!all, all, all || controllers.length < 2];
  (all ? showAll : showOne)();
  return all ? "wall" : `controller=${number}`;
}

listen({
  begin,
  open: () => tellLink("live", "Live"),
  lost: () => tellLink("lost", "Reconnecting"),
  picture: (...news) => (number === null ? wall : stage).add(...news),
  state(state) {
    showState(state, controllers[number]);
    controls.show(number, state);
    stage.outline(state.outlines ?? []);
  },
  log: (entries) => log.add(entries),
});
