// Whose network an address in Taiwan is in: the networks that networks.txt names, where the world table is sure of
// Taiwan.
"use strict";

const { dotted, fromNumbers, linesOf, mustBeApart, overlay } = require("./ranges");

const kTaiwan = 158; // ISO 3166-1

// Lines "number | name | the network's name in the source".
function readNetworks(text) {
  return new Map(linesOf(text).map((line) => {
    const [number, name, sourceName] = line.split("|").map((field) => field.trim());
    if (!/^\d+$/.test(number) || !sourceName || /[-,\t]/.test(name)) throw new Error(`cannot use "${line}"`);
    return [number, { name, sourceName, used: false }];
  }));
}

// The value of a line of the source: number, and name in quotation marks where it has a comma.
function splitNetwork(value) {
  const [, number, name] = /^(\d+),(.*)$/.exec(value);
  return { number, sourceName: name.replace(/^"(.*)"$/, "$1").replaceAll('""', '"') };
}

// A network that was given another name in the source has perhaps another owner: somebody has to look.
function readNamedRanges(text, networks) {
  const ranges = [];
  for (const { first, last, value } of fromNumbers(text)) {
    const { number, sourceName } = splitNetwork(value);
    const network = networks.get(number);
    if (!network) continue;
    if (network.sourceName !== sourceName) throw new Error(`network ${number} is now "${sourceName}"`);
    network.used = true;
    ranges.push({ first, last, value: network.name });
  }
  return mustBeApart(ranges, "asn");
}

function makeDetail({ networkOwners, networks }, world) {
  const table = readNetworks(networks);
  const ranges = overlay(world, readNamedRanges(networkOwners, table),
    (place, name) => (place === kTaiwan ? name : undefined));
  const unused = [...table].filter(([, network]) => !network.used).map(([number]) => number);
  if (unused.length > 0) throw new Error(`networks that the source does not have: ${unused.join(" ")}`);
  return ranges;
}

// Lines "first-last,name" of at most 79 characters.
function detailLines(ranges) {
  const lines = ranges.map(({ first, last, value }) => `${dotted(first)}-${dotted(last)},${value}`);
  for (const line of lines) {
    if (line.length > 79) throw new Error(`too long: "${line}"`);
  }
  return lines;
}

module.exports = { detailLines, makeDetail };
