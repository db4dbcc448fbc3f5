// The countries of ISO 3166-1 with their Chinese names: from iso-codes, and shorter where short-names.txt has one.
"use strict";

const { linesOf } = require("./ranges");

// A catalogue of GNU gettext, least significant byte first: message to translation. The empty message is its head.
function readCatalogue(bytes) {
  if (bytes.readUInt32LE(0) !== 0x950412de) throw new Error("no catalogue of translations");
  const [count, originals, translations] = [8, 12, 16].map((at) => bytes.readUInt32LE(at));
  const textAt = (table, index) => {
    const [length, start] = [0, 4].map((part) => bytes.readUInt32LE(table + 8 * index + part));
    return bytes.toString("utf8", start, start + length);
  };
  const catalogue = new Map();
  for (let i = 0; i < count; ++i) catalogue.set(textAt(originals, i), textAt(translations, i));
  return catalogue;
}

// Lines "CODE name".
function readShortNames(text) {
  return new Map(linesOf(text).map((line) => [line.slice(0, 2), line.slice(3).trim()]));
}

// [{id, name, code}], sorted by id: the numeric code, the name, the two letters.
function readPlaces({ countries, catalogue, shortNames }) {
  const names = readCatalogue(catalogue);
  const shorter = readShortNames(shortNames);
  const places = JSON.parse(countries)["3166-1"].map((country) => {
    const code = country.alpha_2;
    const name = shorter.get(code) ?? names.get(country.common_name ?? country.name);
    if (!name) throw new Error(`${code} has no Chinese name`);
    shorter.delete(code);
    return { id: Number(country.numeric), name, code };
  });
  if (shorter.size > 0) throw new Error(`short names of no country: ${[...shorter.keys()].join(" ")}`);
  return places.sort((a, b) => a.id - b.id);
}

// Lines "id,name,code" of at most 79 characters.
function placeLines(places) {
  const lines = places.map(({ id, name, code }) => `${id},${name},${code}`);
  for (const line of lines) {
    if (line.length > 79 || line.split(",").length !== 3) throw new Error(`cannot be read back: "${line}"`);
  }
  return lines;
}

module.exports = { placeLines, readCatalogue, readPlaces };
