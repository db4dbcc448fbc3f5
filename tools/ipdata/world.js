// Which country an address is in: the word of one source, marked where another one says something else.
"use strict";

const { fromNumbers, mustBeApart, overlay } = require("./ranges");

const kUncertain = 0x80000000;
const kPlaceBits = 0xffffff;

// What the sources write where they know of no country as it is today: unknown, Europe, Asia and the Pacific, and
// two codes of countries that are no more, Serbia and Montenegro and the Netherlands Antilles.
const kNoCountry = new Set(["??", "EU", "AP", "CS", "AN"]);
const kOtherCodes = new Map([["UK", "GB"]]);

function readCountries(text, name, ids) {
  const ranges = mustBeApart(fromNumbers(text), name);
  for (const range of ranges) {
    const code = kOtherCodes.get(range.value) ?? range.value;
    if (!kNoCountry.has(code) && !ids.has(code)) throw new Error(`${name}: no country "${code}"`);
    range.value = ids.get(code);
  }
  return ranges;
}

// The place, with the mark where the second source names another one or is the only one to name any.
function placeValue(place, otherPlace) {
  if (place === undefined) return otherPlace && otherPlace + kUncertain;
  return otherPlace === undefined || otherPlace === place ? place : place + kUncertain;
}

function makeWorld({ geoip, otherCountries }, places) {
  const ids = new Map(places.map(({ id, code }) => [code, id]));
  return overlay(readCountries(geoip, "geoip", ids), readCountries(otherCountries, "asn-country", ids), placeValue);
}

module.exports = { kPlaceBits, kUncertain, makeWorld };
