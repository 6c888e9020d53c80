// The connection to the simulator. When it ends, another one is tried until there is one.

import { read } from "./picture.js";

const SOONEST = 250, LATEST = 2000; // ms until the next try

// Before each try on.begin() says what to listen to; then come on.open(), on.picture(picture, controller),
// on.state(state) and on.log(entries), and on.lost().
export function listen(on) {
  let wait = SOONEST;

  function take(data, pictures) {
    if (typeof data !== "string") {
      const { controller, picture } = read(data, pictures);
      return on.picture(picture, controller);
    }
    const { state, log } = JSON.parse(data);
    if (state) on.state(state);
    if (log) on.log(log);
  }

  function tryAgain() {
    on.lost();
    setTimeout(connect, wait);
    wait = Math.min(2 * wait, LATEST);
  }

  function connect() {
    const pictures = new Map();
    on.begin().then((query) => {
      const socket = new WebSocket(`${location.origin.replace("http", "ws")}/api/live?${query}`);
      socket.binaryType = "arraybuffer";
      socket.onopen = () => {
        wait = SOONEST;
        on.open();
      };
      socket.onmessage = ({ data }) => take(data, pictures);
      socket.onclose = tryAgain;
    }).catch(tryAgain);
  }

  connect();
}
