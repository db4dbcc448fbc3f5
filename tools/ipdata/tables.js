// The five files, by name, of what the sources say.
"use strict";

const { addressCount, fromBlocks, recordBytes } = require("./ranges");
const { placeLines, readPlaces } = require("./names");
const { detailLines, makeDetail } = require("./networks");
const { kUncertain, makeWorld } = require("./world");

const kVpn = 1;
const kDataCentre = 0x10000000; // bit 28

function textBytes(lines) {
  return Buffer.from(lines.map((line) => line + "\n").join(""), "utf8");
}

// places, [{id, name, code}], and four lists of ranges, to the bytes of the files.
function tableFiles({ places, detail, vpn, proxy, world }) {
  return new Map([
    ["taiwan_ip_detail.txt", textBytes(detailLines(detail))],
    ["geoname_translation.txt", textBytes(placeLines(places))],
    ["vpn_ip.bin", recordBytes(vpn, "vpn")],
    ["proxy_ip.bin", recordBytes(proxy, "proxy")],
    ["geo_ip.bin", recordBytes(world, "world")],
  ]);
}

// From the inputs by name: the texts of the packages, the two lists and the three tables made by hand.
function makeTables(inputs) {
  const places = readPlaces(inputs);
  const world = makeWorld(inputs, places);
  return {
    places,
    detail: makeDetail(inputs, world),
    vpn: fromBlocks(inputs.vpnBlocks, kVpn),
    proxy: fromBlocks(inputs.dataCentreBlocks, kDataCentre),
    world,
  };
}

function countLines({ places, world, ...others }) {
  const count = (name, ranges) => `${name}: ${ranges.length} ranges, ${addressCount(ranges)} addresses`;
  return [
    count("world", world),
    count("  of them uncertain", world.filter(({ value }) => value >= kUncertain)),
    ...Object.entries(others).map(([name, ranges]) => count(name, ranges)),
    `places: ${places.length}`,
  ];
}

module.exports = { countLines, kDataCentre, kVpn, makeTables, tableFiles };
