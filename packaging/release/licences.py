"""What is inside the packages that others have written, under which licences."""

import hashlib
import json
import subprocess
import uuid
from dataclasses import dataclass
from pathlib import Path

from .product import CHECKOUT, ReleaseError, facts

RULE = "=" * 78


@dataclass(frozen=True)
class Part:
    """Something of a Debian package that is part of our files."""
    name: str
    package: str
    licence: str  # as SPDX writes it
    use: str

    @property
    def version(self):
        done = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", self.package], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        if done.returncode != 0:
            raise ReleaseError(f"the package {self.package} is missing; tools/release installs it")
        return done.stdout

    @property
    def copyright(self):
        return Path("/usr/share/doc", self.package, "copyright").read_text("utf-8")


WINDOWS = "linked statically into the programs for Windows"
LINUX = "compiled into the program for Linux"
LIBRARY = "used by the program for Linux, not inside it"
PARTS = (
    Part("GCC runtime (libstdc++, libgcc)", "gcc-mingw-w64-i686-posix-runtime",
         "GPL-3.0-or-later WITH GCC-exception-3.1", WINDOWS),
    Part("mingw-w64 runtime and winpthreads", "mingw-w64-i686-dev",
         "ZPL-2.1 AND MIT AND BSD-3-Clause AND LicenseRef-mingw-w64-public-domain", WINDOWS),
    Part("CLI11", "libcli11-dev", "BSD-3-Clause", WINDOWS + ", and " + LINUX),
    Part("JSON for Modern C++", "nlohmann-json3-dev", "MIT", WINDOWS + ", and " + LINUX),
    Part("NSIS", "nsis-common", "Zlib AND CPL-1.0", "the beginning of the set-up program"),
    Part("hivex", "libhivex-dev", "LGPL-2.1-only", LIBRARY),
    Part("Nettle", "nettle-dev", "LGPL-3.0-or-later OR GPL-2.0-or-later", LIBRARY),
)


def notices():
    """For the packages for Windows; Debian has its own place for each."""
    text = ("zelvreg is free software under the MIT licence, which is in LICENSE.txt. Parts of others are\n"
            "in it; these are their names and licences.\n")
    for part in PARTS:
        if WINDOWS in part.use or part.name == "NSIS":
            text += (f"\n{RULE}\n{part.name} {part.version}\n{part.use}; {part.licence}\n{RULE}\n\n"
                     f"{part.copyright}")
    return text


def identifier(kind, name):
    letters = "".join(letter if letter.isalnum() or letter in ".-" else "-" for letter in name)
    return f"SPDXRef-{kind}-{letters}"


def described_file(path, name):
    content = path.read_bytes()
    return {
        "SPDXID": identifier("File", name), "fileName": "./" + name,
        "checksums": [{"algorithm": algorithm, "checksumValue": hashlib.new(algorithm.lower(), content).hexdigest()}
                      for algorithm in ("SHA1", "SHA256")],
        "licenseConcluded": "NOASSERTION", "licenseInfoInFiles": ["NOASSERTION"],
        "copyrightText": "NOASSERTION"}


def described_part(part):
    return {
        "SPDXID": identifier("Package", part.package), "name": part.name,
        "versionInfo": part.version, "downloadLocation": "https://deb.debian.org/debian",
        "filesAnalyzed": False, "licenseConcluded": part.licence, "licenseDeclared": part.licence,
        "copyrightText": "NOASSERTION", "comment": part.use,
        "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                          "referenceLocator": f"pkg:deb/debian/{part.package}@{part.version}"}]}


def described_product(release):
    about = facts()
    return {
        "SPDXID": "SPDXRef-Package-zelvreg", "name": "zelvreg", "versionInfo": release.version,
        "downloadLocation": about["downloads"], "homepage": about["homepage"],
        "supplier": f"Organization: {about['publisher']}", "filesAnalyzed": False,
        "licenseConcluded": "MIT", "licenseDeclared": "MIT",
        "copyrightText": (CHECKOUT / "LICENSE").read_text("utf-8").splitlines()[2]}


def relation(first, kind, second):
    return {"spdxElementId": first, "relationshipType": kind, "relatedSpdxElement": second}


def make(release, products):
    """The list as SPDX 2.3 in JSON; `products` are the files of the release."""
    target = release.product(".spdx.json")
    files = [described_file(path, path.name) for path in products]
    kinds = {part.package: "DYNAMIC_LINK" if part.use == LIBRARY else "CONTAINS" for part in PARTS}
    name = f"zelvreg-{release.version}"
    content = {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": name,
        "documentNamespace": f"{facts()['homepage']}spdx/{name}-"
                             f"{uuid.uuid5(uuid.NAMESPACE_URL, json.dumps(files))}",
        "creationInfo": {"created": release.time.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": [f"Organization: {facts()['publisher']}", "Tool: tools/release"]},
        "hasExtractedLicensingInfos": [{
            "licenseId": "LicenseRef-mingw-w64-public-domain",
            "name": "mingw-w64 runtime, public domain",
            "extractedText": "This file has no copyright assigned and is placed in the Public Domain."}],
        "packages": [described_product(release), *map(described_part, PARTS)],
        "files": files,
        "relationships": [
            relation("SPDXRef-DOCUMENT", "DESCRIBES", "SPDXRef-Package-zelvreg"),
            *(relation("SPDXRef-Package-zelvreg", "CONTAINS", each["SPDXID"]) for each in files),
            *(relation("SPDXRef-Package-zelvreg", kinds[part.package], identifier("Package", part.package))
              for part in PARTS)]}
    target.write_text(json.dumps(content, indent=1, ensure_ascii=False) + "\n", "utf-8")
    return target
