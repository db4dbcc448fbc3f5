// Whose network an address in Taiwan is in: the networks that networks.txt names and the campuses of campuses.txt,
// where the world table is sure of Taiwan.
"use strict";

const { dotted, fromBlocks, fromNumbers, linesOf, mustBeApart, overlay } = require("./ranges");

const kTaiwan = 158; // ISO 3166-1

// The numbers that announce the blocks of universities which have none of their own.
const kAcademic = new Set(["1659", "17713"]);

// Lines of fields between bars; the second one is a name.
function fieldsOf(text) {
  return linesOf(text).map((line) => {
    const fields = line.split("|").map((field) => field.trim());
    if (!fields[1] || /[-,\t]/.test(fields[1])) throw new Error(`cannot use "${line}"`);
    return fields;
  });
}

// Lines "number | name | the network's name in the source".
function readNetworks(text) {
  return new Map(fieldsOf(text).map(([number, name, sourceName]) => {
    if (!/^\d+$/.test(number) || !sourceName) throw new Error(`cannot use "${number} | ${name}"`);
    return [number, { number, name, sourceName, used: false }];
  }));
}

// Lines "block | name".
function readCampuses(text) {
  const ranges = fieldsOf(text).flatMap(([block, name]) => fromBlocks(block, name));
  return mustBeApart(ranges.sort((a, b) => a.first - b.first), "campuses");
}

// The value of a line of the source: number, and name in quotation marks where it has a comma.
function splitNetwork(value) {
  const [, number, name] = /^(\d+),(.*)$/.exec(value);
  return { number, sourceName: name.replace(/^"(.*)"$/, "$1").replaceAll('""', '"') };
}

// The source's ranges of the table's networks, and those without a name that reach into a campus. A network that was
// given another name in the source has perhaps another owner: somebody has to look.
function readOwnedRanges(text, networks, campuses) {
  const ranges = [];
  for (const { first, last, value } of fromNumbers(text)) {
    const owner = splitNetwork(value);
    const network = networks.get(owner.number);
    if (network) {
      if (network.sourceName !== owner.sourceName) {
        throw new Error(`network ${owner.number} is now "${owner.sourceName}"`);
      }
      network.used = true;
    } else if (!campuses.some((campus) => campus.first <= last && first <= campus.last)) {
      continue;
    }
    ranges.push({ first, last, value: network ?? owner });
  }
  return mustBeApart(ranges, "asn");
}

// The name where a network and a campus meet. A network of anybody else there means that the campus's line is wrong, or
// is no more: somebody has to look.
function nameOf(network, campus) {
  if (campus === undefined) return network?.name;
  if (network !== undefined && network.name !== campus && !kAcademic.has(network.number)) {
    throw new Error(`${campus}: network ${network.number}, "${network.sourceName}", is in its block`);
  }
  return campus;
}

function makeDetail({ networkOwners, networks, campuses }, world) {
  const table = readNetworks(networks);
  const blocks = readCampuses(campuses);
  const owned = readOwnedRanges(networkOwners, table, blocks);
  const unused = [...table].filter(([, network]) => !network.used).map(([number]) => number);
  if (unused.length > 0) throw new Error(`networks that the source does not have: ${unused.join(" ")}`);
  const names = overlay(owned, blocks, nameOf);
  return overlay(world, names, (place, name) => (place === kTaiwan ? name : undefined));
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
