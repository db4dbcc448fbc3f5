// Fetches the packages that the tables are made of, and reads their files: of the versions and contents that
// manifest.json names, or the newest there are.
"use strict";

const { execFileSync } = require("child_process");
const { createHash } = require("crypto");
const fs = require("fs");
const path = require("path");

const { readCatalogue } = require("./names");

const kCatalogue = "usr/share/locale/zh_TW/LC_MESSAGES/iso_3166-1.mo";

// By package: where it comes from, the file behind each input's name, and how the date of its data is read.
const kPackages = {
  "tor-geoipdb": {
    from: "apt",
    files: { geoip: "usr/share/tor/geoip" },
    dateOf: ({ geoip }) => /^# Generated: (.+)$/m.exec(geoip)[1],
  },
  "iso-codes": {
    from: "apt",
    files: { countries: "usr/share/iso-codes/json/iso_3166-1.json", catalogue: kCatalogue },
    dateOf: ({ catalogue }) => /^PO-Revision-Date: (.+)$/m.exec(readCatalogue(catalogue).get(""))[1],
  },
  "@ip-location-db/asn-country": {
    from: "npm",
    files: { otherCountries: "package/asn-country-ipv4-num.csv" },
  },
  "@ip-location-db/asn": {
    from: "npm",
    files: { networkOwners: "package/asn-ipv4-num.csv" },
  },
};

function sha256(bytes) {
  return createHash("sha256").update(bytes).digest("hex");
}

function run(folder, program, ...args) {
  return execFileSync(program, args, { cwd: folder, stdio: ["ignore", "pipe", "inherit"] }).toString("utf8").trim();
}

// Both clients check what they download against their archive's digests. Nothing of a package is run.
const kUnpack = {
  apt(folder, name, version) {
    run(folder, "apt-get", "download", "-q", version ? `${name}=${version}` : name);
    const archive = fs.readdirSync(folder).find((file) => file.endsWith(".deb"));
    run(folder, "dpkg-deb", "-x", archive, ".");
    return run(folder, "dpkg-deb", "-f", archive, "Version");
  },
  npm(folder, name, version) {
    const [{ filename, version: got }] = JSON.parse(
      run(folder, "npm", "pack", "--json", "--ignore-scripts", "--loglevel=error", `${name}@${version ?? "latest"}`));
    // Some versions of npm write the name with the scope, and the file without it.
    run(folder, "tar", "-xzf", filename.replace(/^@/, "").replace("/", "-"));
    return got;
  },
};

// The npm packages carry their date in their version: 2.3.2026061719 is of June 17, 2026.
function dateInVersion(version) {
  const match = /\.(\d{4})(\d{2})(\d{2})\d*$/.exec(version);
  return match ? match.slice(1).join("-") : "unknown";
}

function fetchPackage(folder, name, known) {
  const { from, files, dateOf } = kPackages[name];
  fs.mkdirSync(folder);
  const version = kUnpack[from](folder, name, known?.version);
  const contents = {};
  const entry = { version, date: "", files: {} };
  for (const [input, file] of Object.entries(files)) {
    const bytes = fs.readFileSync(path.join(folder, file));
    entry.files[file] = { bytes: bytes.length, sha256: sha256(bytes) };
    if (known && known.files[file]?.sha256 !== entry.files[file].sha256) {
      throw new Error(`${name}: ${file} is not the file that manifest.json names`);
    }
    contents[input] = file === kCatalogue ? bytes : bytes.toString("utf8");
  }
  entry.date = dateOf ? dateOf(contents) : dateInVersion(version);
  return { contents, entry };
}

// {inputs, packages}: the contents by name, and what manifest.json says of the packages. `known` is what it says
// already; without it the newest versions are taken.
function fetchInputs(folder, known) {
  const fetched = { inputs: {}, packages: {} };
  for (const [index, name] of Object.keys(kPackages).entries()) {
    console.log(`fetching ${name}`);
    const { contents, entry } = fetchPackage(path.join(folder, String(index)), name, known?.[name]);
    Object.assign(fetched.inputs, contents);
    fetched.packages[name] = entry;
  }
  return fetched;
}

module.exports = { fetchInputs, sha256 };
