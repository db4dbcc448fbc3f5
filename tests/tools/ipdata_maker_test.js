// The maker of the tables of addresses, on a few lines of each source.
"use strict";

const assert = require("node:assert");
const { test } = require("node:test");

const { makeTables, tableFiles } = require("../../tools/ipdata/tables");

// A catalogue of translations with three messages.
function catalogue() {
  const pairs = [["", "Language: zh_TW\n"], ["Japan", "日本"], ["Taiwan", "臺灣"]];
  const texts = pairs.flat().map((text) => Buffer.from(text + "\0"));
  const head = [0x950412de, 0, pairs.length, 28, 28 + 8 * pairs.length, 0, 0];
  let at = 28 + 16 * pairs.length;
  const table = texts.map((text) => [text.length - 1, (at += text.length) - text.length]);
  const inOrder = [0, 2, 4, 1, 3, 5].flatMap((index) => table[index]);
  return Buffer.concat([Buffer.from(Uint32Array.from([...head, ...inOrder]).buffer), ...texts]);
}

function inputs(changes) {
  return {
    countries: JSON.stringify({ "3166-1": [
      { alpha_2: "TW", numeric: "158", name: "Taiwan, Province of China", common_name: "Taiwan" },
      { alpha_2: "JP", numeric: "392", name: "Japan" },
      { alpha_2: "GB", numeric: "826", name: "United Kingdom" },
    ] }),
    catalogue: catalogue(),
    shortNames: "# by hand\nGB 英國\n",
    geoip: "# head\n100,199,TW\n200,299,JP\n300,399,EU\n400,409,??\n500,599,UK\n600,609,UK\n4294967295,4294967295,JP\n",
    otherCountries: "100,149,TW\n150,159,JP\n300,349,GB\n605,619,GB\n",
    networkOwners: '90,119,7,"North, South"\n120,129,8,Elsewhere\n130,169,9,Cable\n170,179,9,Cable\n' +
      "180,187,1659,Academic\n192,195,6,Evening School\n196,209,9,Cable\n",
    networks: "7 | 南北 | North, South\n9 | 第四台 | Cable\n1659 | 學術 | Academic\n6 | 夜校 | Evening School\n",
    campuses: "0.0.0.188/30 | 夜校\n0.0.0.192/30 | 夜校\n0.0.0.184/30 | 日校\n",
    vpnBlocks: "10.0.1.0/24\n10.0.0.0/24\n",
    dataCentreBlocks: "0.0.0.8/30\n0.0.0.0/28\n",
    ...changes,
  };
}

function filesOf(changes) {
  return tableFiles(makeTables(inputs(changes)));
}

function records(bytes) {
  const numbers = [];
  for (let at = 0; at < bytes.length; at += 4) numbers.push(bytes.readUInt32LE(at));
  return numbers;
}

test("five files of known bytes", () => {
  const files = filesOf();
  const mark = 0x80000000;
  assert.deepEqual(records(files.get("geo_ip.bin")), [
    100, 149, 158, //
    150, 159, 158 + mark, // the second source says otherwise
    160, 199, 158, // and nothing here
    200, 299, 392, //
    300, 349, 826 + mark, // only the second one names a country
    500, 609, 826, // two neighbours that say the same
    610, 619, 826 + mark, //
    4294967295, 4294967295, 392,
  ]);
  assert.deepEqual(files.get("vpn_ip.bin"), Buffer.from("0000000a ff01000a 01000000".replaceAll(" ", ""), "hex"));
  assert.deepEqual(records(files.get("proxy_ip.bin")), [0, 15, 0x10000000]);
  assert.equal(files.get("geoname_translation.txt").toString(), "158,臺灣,TW\n392,日本,JP\n826,英國,GB\n");
  assert.equal(files.get("taiwan_ip_detail.txt").toString(),
    "0.0.0.100-0.0.0.119,南北\n0.0.0.130-0.0.0.149,第四台\n0.0.0.160-0.0.0.179,第四台\n" +
    "0.0.0.180-0.0.0.183,學術\n0.0.0.184-0.0.0.187,日校\n0.0.0.188-0.0.0.195,夜校\n0.0.0.196-0.0.0.199,第四台\n");
});

test("what it does not know is refused", () => {
  const refused = [
    [{ geoip: "1,2,XX\n" }, /no country/],
    [{ geoip: "1,2,TW\n2,3,JP\n" }, /out of order/],
    [{ networks: "7 | 南北 | North\n" }, /network 7 is now "North, South"/],
    [{ networks: "5 | 誰 | Nobody\n" }, /does not have: 5/],
    [{ networks: "7 | 南-北 | North, South\n" }, /cannot use/],
    [{ campuses: "0.0.0.192/30 | 日校\n" }, /日校: network 6, "Evening School", is in its block/],
    [{ campuses: "0.0.0.120/30 | 日校\n" }, /日校: network 8, "Elsewhere", is in its block/],
    [{ campuses: "0.0.0.184/30 | 日校\n0.0.0.184/29 | 夜校\n" }, /out of order/],
    [{ shortNames: "" }, /GB has no Chinese name/],
    [{ vpnBlocks: "10.0.0.1/24\n" }, /no block/],
    [{ vpnBlocks: "10.0.0/24\n" }, /no address/],
  ];
  for (const [change, message] of refused) assert.throws(() => filesOf(change), message);
});
