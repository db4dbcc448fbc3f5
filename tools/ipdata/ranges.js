// Ranges of IPv4 addresses, {first, last, value} with both ends inclusive; lists of them are sorted and apart.
"use strict";

const kRecord = 12;

function parseAddress(text) {
  const groups = text.split(".").map(Number);
  if (groups.length !== 4 || !groups.every((group) => Number.isInteger(group) && group >= 0 && group <= 255)) {
    throw new Error(`no address: "${text}"`);
  }
  return groups.reduce((address, group) => address * 256 + group, 0);
}

function dotted(address) {
  return [24, 16, 8, 0].map((shift) => (address >>> shift) & 0xff).join(".");
}

// The lines of a text; '#' begins a comment.
function linesOf(text) {
  return text.split(/\r?\n/).filter((line) => line !== "" && !line.startsWith("#"));
}

// Lines "first,last,value", the addresses as numbers.
function fromNumbers(text) {
  return linesOf(text).map((line) => {
    const match = /^(\d+),(\d+),(.*)$/.exec(line);
    if (!match) throw new Error(`cannot read "${line}"`);
    return { first: Number(match[1]), last: Number(match[2]), value: match[3] };
  });
}

// Lines "address/length", in any order; blocks that overlap or touch become one range.
function fromBlocks(text, value) {
  const blocks = linesOf(text).map((line) => {
    const [address, length] = line.split("/");
    const size = 2 ** (32 - Number(length));
    const first = parseAddress(address);
    if (!Number.isInteger(size) || first % size !== 0) throw new Error(`no block: "${line}"`);
    return { first, last: first + size - 1, value };
  });
  const ranges = [];
  for (const block of blocks.sort((a, b) => a.first - b.first)) append(ranges, block);
  return ranges;
}

// Adds what comes next, joined to the last range where it touches or overlaps it and says the same.
function append(ranges, { first, last, value }) {
  const before = ranges.at(-1);
  if (before && before.value === value && first <= before.last + 1) {
    before.last = Math.max(before.last, last);
  } else {
    ranges.push({ first, last, value });
  }
}

function mustBeApart(ranges, name) {
  let next = 0;
  for (const { first, last } of ranges) {
    if (first < next || last < first || last > 0xffffffff) {
      throw new Error(`${name}: ${dotted(first)}-${dotted(last)} is out of order`);
    }
    next = last + 1;
  }
  return ranges;
}

// Two lists, cut wherever either begins or ends: combine(value of a, value of b), undefined where a list says
// nothing, gives the value of each piece, or undefined for none. Neighbours of equal value are joined.
function overlay(a, b, combine) {
  const ranges = [];
  let i = 0;
  let j = 0;
  for (let first = 0; i < a.length || j < b.length;) {
    let last = 0xffffffff;
    const valueOf = (range) => {
      if (!range) return undefined;
      const begun = range.first <= first;
      last = Math.min(last, begun ? range.last : range.first - 1);
      return begun ? range.value : undefined;
    };
    const value = combine(valueOf(a[i]), valueOf(b[j]));
    if (value !== undefined) append(ranges, { first, last, value });
    first = last + 1;
    if (i < a.length && a[i].last < first) ++i;
    if (j < b.length && b[j].last < first) ++j;
  }
  return ranges;
}

// The records of the binary files: first, last, value, 32 bits each, least significant byte first.
function recordBytes(ranges, name) {
  const bytes = Buffer.alloc(kRecord * ranges.length);
  mustBeApart(ranges, name).forEach(({ first, last, value }, index) => {
    [first, last, value].forEach((number, field) => bytes.writeUInt32LE(number, kRecord * index + 4 * field));
  });
  return bytes;
}

function addressCount(ranges) {
  return ranges.reduce((sum, { first, last }) => sum + last - first + 1, 0);
}

module.exports = {
  addressCount, dotted, fromBlocks, fromNumbers, linesOf, mustBeApart, overlay, parseAddress, recordBytes,
};
