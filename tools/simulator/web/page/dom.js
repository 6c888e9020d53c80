// Small helps with the document and the server. Text is only ever set as text.

export const byId = (id) => document.getElementById(id);

// An element with properties, and with texts and elements in it. What is null is left out.
export function make(tag, properties = {}, ...inside) {
  const element = Object.assign(document.createElement(tag), properties);
  element.append(...inside.filter((part) => part !== null));
  return element;
}

// Puts parts into a place unless it has the same already, in which something may be selected or read aloud.
export function fill(place, ...parts) {
  const fresh = place.cloneNode();
  fresh.append(...parts);
  if (!place.isEqualNode(fresh)) place.replaceChildren(...parts);
}

// A function that has `act` called at the next frame, however often it is called before.
export function atNextFrame(act) {
  let asked = false;
  const frame = (now) => act(now, asked = false);
  return () => (asked ||= !!requestAnimationFrame(frame));
}

// As screen-20261231T235950Z and its ending.
export function download(blob, ending) {
  const stamp = new Date().toISOString().replaceAll(/[-:]|\.\d+/g, "");
  const link = make("a", { href: URL.createObjectURL(blob), download: `screen-${stamp}.${ending}` });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

// Settles with the answer's body; what the server refused is an error with its words.
export async function ask(path, options) {
  const answer = await fetch(path, options).catch(() => { throw new Error("The simulator does not answer"); });
  if (answer.ok) return answer;
  const { error } = await answer.json().catch(() => ({}));
  throw new Error(error || `${answer.status} ${answer.statusText}`);
}

export function post(path, body) {
  return ask(path, { method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) });
}
