// The connection to the simulator. When it ends, another one is tried until there is one.

import { read } from "./picture.js";

const SOONEST = 250, LATEST = 2000; // ms until the next try

// Before each try on.begin() says what to listen to; then come on.open(), on.picture(picture, controller),
// on.state(state) and on.log(entries), and on.lost().
export async function listen(on) {
  for (let wait = SOONEST; ; wait = Math.min(2 * wait, LATEST)) {
    await on.begin().then((query) => hear(query, { ...on, open: () => on.open(wait = SOONEST) })).catch(() => {});
    on.lost();
    await new Promise((done) => setTimeout(done, wait));
  }
}

// Settles when the connection has ended.
function hear(query, on) {
  const socket = new WebSocket(`${location.origin.replace("http", "ws")}/api/live?${query}`), pictures = new Map();
  socket.binaryType = "arraybuffer";
  socket.onopen = on.open;
  socket.onmessage = ({ data }) => {
    if (typeof data !== "string") return on.picture(...read(data, pictures));
    const { state, log } = JSON.parse(data);
    if (state) on.state(state);
    if (log) on.log(log);
  };
  return new Promise((ended) => (socket.onclose = ended));
}
