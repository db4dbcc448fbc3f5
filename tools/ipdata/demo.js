// The tables of the demo BBS: from a text made by hand, demo/content/places/places.txt.
"use strict";

const { linesOf, parseAddress } = require("./ranges");
const { kDataCentre, kVpn } = require("./tables");
const { kUncertain } = require("./world");

// Lines "place ID NAME CODE" and "KIND FIRST-LAST WHAT", sorted by address within a kind; see the text itself.
function readDemoTables(text) {
  const tables = { places: [], detail: [], vpn: [], proxy: [], world: [] };
  const idOf = (code) => tables.places.find((place) => place.code === code).id;
  const valueOf = {
    detail: (name) => name,
    vpn: () => kVpn,
    proxy: () => kDataCentre,
    world: (code, mark) => idOf(code) + (mark === "?" ? kUncertain : 0),
  };
  for (const line of linesOf(text)) {
    const [kind, range, ...what] = line.trim().split(/\s+/);
    if (kind === "place") {
      tables.places.push({ id: Number(range), name: what[0], code: what[1] });
    } else {
      const [first, last] = range.split("-").map(parseAddress);
      tables[kind].push({ first, last, value: valueOf[kind](...what) });
    }
  }
  return tables;
}

module.exports = { readDemoTables };
