#!/usr/bin/python3
"""Lists what is linked into Windows programs (SPDX 2.3): make_sbom.py VERSION TIME MAPS PROGRAM...

The linker's map of each program, in the folder MAPS, names the libraries, the system's packages their
versions. TIME is in seconds since 1970. The list goes to the standard output.
"""

import hashlib
import json
import re
import subprocess
import sys
from datetime import datetime, timezone
from pathlib import Path

# By the package that a library comes from: what it is, by whom, and its licence.
GCC = ("GCC runtime libraries (libstdc++, libgcc, libssp)", "Free Software Foundation",
       "GPL-3.0-or-later WITH GCC-exception-3.1")
KNOWN = {
    "g++-mingw-w64-x86-64-posix": GCC,
    "gcc-mingw-w64-x86-64-posix": GCC,
    "gcc-mingw-w64-x86-64-posix-runtime": GCC,
    "mingw-w64-x86-64-dev": ("mingw-w64 C runtime and winpthreads", "mingw-w64 project",
                             "ZPL-2.1 AND MIT AND BSD-3-Clause"),
    "nsis": ("NSIS installer stub (installer, uninstaller, karvel-settings.exe)", "NSIS contributors",
             "Zlib AND CPL-1.0"),
}


def ask(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def packages_linked(linker_map):
    archives = {str(Path(path).resolve()) for path in
                re.findall(r"^(/\S+\.a)\(", linker_map, re.MULTILINE)}
    return {line.split(":")[0] for line in ask("dpkg", "-S", *archives).splitlines()}


def spdx_id(name):
    return "SPDXRef-" + re.sub(r"[^\w.-]", "-", name)


def component(package):
    name, supplier, licence = KNOWN[package]  # an unknown one needs a look at its licence first
    version = ask("dpkg-query", "-W", "-f=${Version}", package)
    return {"name": name, "SPDXID": spdx_id(package),
            "versionInfo": version, "supplier": f"Organization: {supplier}",
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "licenseConcluded": licence, "licenseDeclared": licence,
            "copyrightText": "NOASSERTION", "comment": f"Debian package {package} {version}"}


def own_program(program, version):
    digest = hashlib.sha256(program.read_bytes()).hexdigest()
    return {"name": program.stem, "SPDXID": spdx_id(program.stem), "versionInfo": version,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "checksums": [{"algorithm": "SHA256", "checksumValue": digest}],
            "licenseConcluded": "NOASSERTION", "licenseDeclared": "NOASSERTION",
            "copyrightText": "NOASSERTION"}


def relationship(element, kind, related):
    return {"spdxElementId": spdx_id(element), "relationshipType": kind,
            "relatedSpdxElement": spdx_id(related)}


def main(version, time, maps, *paths):
    programs = [Path(path) for path in paths]
    linked = {program.stem: packages_linked(
        (Path(maps) / f"{program.name}.map").read_text(encoding="utf-8", errors="replace"))
              for program in programs}
    linked["karvel"].add("nsis")  # the programs beside it
    own = [own_program(program, version) for program in programs]
    parts = map(component, sorted(set().union(*linked.values())))
    identifier = hashlib.sha256("".join(
        part["checksums"][0]["checksumValue"] for part in own).encode()).hexdigest()
    created = datetime.fromtimestamp(int(time), timezone.utc)
    json.dump({
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"karvel-{version}",
        "documentNamespace": f"https://spdx.org/spdxdocs/karvel-{version}-{identifier}",
        "creationInfo": {"created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Tool: karvel packaging"]},
        "packages": [*own, *parts],
        "relationships": [
            *(relationship("DOCUMENT", "DESCRIBES", program) for program in linked),
            *(relationship(program, "CONTAINS", part)
              for program, packages in linked.items() for part in sorted(packages))],
    }, sys.stdout, indent=1)
    print()


if __name__ == "__main__":
    main(*sys.argv[1:])
