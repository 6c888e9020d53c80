// What the controller knows of itself.

import { byId, fill, make } from "./dom.js";

const COLORS = { single: "single colour", double: "double colour", three: "three colours", full: "full colour" };
const MODES = ["by hand", "by the clock", "by the sensor"]; // of brightness

export const screenOf = ({ size, color }) => `${size[0]} × ${size[1]}, ${COLORS[color] ?? color}`;

// Names are kept as labels: bytes other than letters, digits, - and _ are %XX.
function nameOf(label) {
  try {
    return decodeURIComponent(label);
  } catch {
    return label; // in another encoding
  }
}

const time = (hour, minute) => [hour, minute].map((part) => String(part).padStart(2, "0")).join(":");
const timerText = (at) => `${time(at.on_hour, at.on_minute)}–${time(at.off_hour, at.off_minute)}`;
const bytes = (count) => count.toLocaleString("en");
const empty = (words) => make("p", { className: "empty" }, words);
const badge = (words, kind = "") => make("span", { className: `badge ${kind}` }, words);

// Terms without a value are left out.
function list(rows) {
  const parts = rows.filter(([, value]) => value !== "");
  return make("dl", {}, ...parts.flatMap(([term, ...value]) => [make("dt", {}, term), make("dd", {}, ...value)]));
}

function table(head, rows, none) {
  if (!rows.length) return empty(none);
  const line = (tag, cells) => make("tr", {}, ...cells.map((cell) => make(tag, {}, cell)));
  const body = make("tbody", {}, ...rows.map((row) => line("td", row)));
  return make("table", {}, make("thead", {}, line("th", head)), body);
}

function playing({ program, next, program_errors, power, fault }) {
  const notes = Object.entries(program_errors).map(([name, why]) => `${nameOf(name)} cannot be played: ${why}`);
  if (!power) notes.unshift("The screen is off");
  if (fault.fault !== "none") notes.unshift(`Answers are spoilt: ${fault.fault}`);
  const now = make("strong", { id: "now-playing" }, nameOf(program) || "no program");
  return [list([["Now", now], ["Next", nameOf(next)]]), make("p", { className: "notes" }, notes.join("\n"))];
}

function lockText({ locked, program, duration, nonvolatile }) {
  if (!locked) return "open";
  const parts = ["locked", program && `to ${nameOf(program)}`, duration && `for ${duration} s`];
  return [...parts, nonvolatile && "also after a restart"].filter(Boolean).join(", ");
}

function controller(state, about) {
  const used = state.total_memory - state.available_memory;
  const bar = (ariaLabel, value, max) => make("meter", { max, value, ariaLabel });
  return [list([
    ["Type", about.type],
    ["Screen", screenOf(about)],
    ["Address", `${about.address}:${about.port}`],
    ["Name", nameOf(state.name)],
    ["Location", nameOf(state.location)],
    ["Firmware", nameOf(state.firmware) || "as it came"],
    ["Power", state.power ? badge("on", "good") : badge("off", "warn")],
    ["Timer", state.timing.map(timerText).join(", ")],
    ["Brightness", bar("Brightness", state.brightness_level, 15),
      ` ${state.brightness_level} of 15, ${MODES[state.brightness.mode]}`],
    ["Screen lock", lockText(state.screen_lock)],
    ["Program lock", lockText(state.program_lock)],
    ["Password", state.controller_password ? "set" : "none"],
    ["Memory", bar("Memory in use", used, state.total_memory), ` ${bytes(used)} of ${bytes(state.total_memory)} B`],
    ["Restarts", String(state.resets)],
  ])];
}

function dynamic({ areas }) {
  const rows = areas.map(({ id, x, y, width, height, pages, shown }) =>
    [id, `${x}, ${y}`, `${width} × ${height}`, pages, shown ? badge("shown", "good") : badge("waits")]);
  return [table(["Area", "Place", "Size", "Pages", ""], rows, "No dynamic areas")];
}

function files({ files, program, next, program_errors }) {
  const mark = (name) => {
    if (Object.hasOwn(program_errors, name)) return badge("cannot be played", "bad");
    if (name === program) return badge("now", "good");
    return name === next ? badge("next") : "";
  };
  const rows = files.map(({ name, family, type, size, crc }) => [nameOf(name), family === "ordinary" ? type : "config",
    bytes(size), crc.toString(16).padStart(8, "0"), mark(name)]);
  return [table(["Name", "Type", "Bytes", "CRC-32", ""], rows, "No files")];
}

function spoken(state) {
  const voices = [...state.sounds, ...state.areas.flatMap(({ sound }) => sound ?? [])];
  if (!voices.length) return [empty("Nothing to say")];
  return [make("ul", { className: "voices" }, ...voices.map((voice) => make("li", {},
    make("q", {}, voice.text),
    make("span", { className: "note" }, `volume ${voice.volume}, speed ${voice.speed}, voice ${voice.person}`))))];
}

// It stays while something in it is selected.
function showEverything(state) {
  const place = byId("everything"), selection = getSelection();
  const selected = !selection.isCollapsed && selection.containsNode(place, true);
  if (place.parentElement.open && !selected) fill(place, JSON.stringify(state, null, 2));
}

export function showState(state, about) {
  for (const part of [playing, controller, dynamic, files, spoken]) fill(byId(part.name), ...part(state, about));
  byId("everything").parentElement.ontoggle = () => showEverything(state);
  showEverything(state);
}
