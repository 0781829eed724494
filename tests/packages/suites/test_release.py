"""What a release says of itself, and whether another clone makes the same."""

import hashlib
import json
import os
import subprocess
import unittest
from pathlib import Path

import jsonschema
import yaml

from driver.box import CHECKOUT
from release import licences, setup, windows
from release.product import PACKAGING

from .given import Given, another_release, product, version

KINDS = ("-setup.exe", ".msi", "-portable.zip", ".deb", ".spdx.json")
# The parts of a package of the Windows Installer that are no tables.
SUMMARY = "_SummaryInformation"


def tables(package):
    """{table: its lines} of a Windows Installer package, without the time it was made."""
    names = subprocess.run(["msiinfo", "tables", package], text=True, stdout=subprocess.PIPE, check=True)
    return {name: sorted(subprocess.run(["msiinfo", "export", package, name], stdout=subprocess.PIPE,
                                        check=True).stdout.splitlines())
            for name in names.stdout.split() if name != SUMMARY}


class ReleaseTest(unittest.TestCase):
    def test_it_is_all_there_and_the_checksums_are_right(self):
        names = {path.name for path in map(product, KINDS)}
        sums = dict(reversed(line.split("  ")) for line in product("SHA256SUMS").read_text().splitlines())
        self.assertEqual(set(sums), names)
        for name, wanted in sums.items():
            self.assertEqual(hashlib.sha256((Given.release / name).read_bytes()).hexdigest(), wanted)

    def test_winget_takes_its_manifests(self):
        found = {}
        for path in product("-winget").iterdir():
            content = yaml.safe_load(path.read_text("utf-8"))
            kind = content["ManifestType"]
            # A date of YAML is a text of JSON.
            content = json.loads(json.dumps(content, default=str))
            jsonschema.validate(content, json.loads((PACKAGING / "winget" / f"{kind}.json").read_text("utf-8")))
            found[kind] = content
        self.assertEqual(set(found), {"version", "defaultLocale", "installer"})
        self.assertEqual({each["PackageVersion"] for each in found.values()}, {version()})
        self.assertEqual([each["InstallerSha256"].lower() for each in found["installer"]["Installers"]],
                         [hashlib.sha256(product(kind).read_bytes()).hexdigest() for kind in KINDS[:2]])

    def test_the_list_of_what_is_inside_names_all_of_it(self):
        content = json.loads(product(".spdx.json").read_text("utf-8"))
        elements = [*content["packages"], *content["files"]]
        identifiers = {each["SPDXID"] for each in elements} | {"SPDXRef-DOCUMENT"}
        self.assertEqual(len(identifiers), len(elements) + 1)
        for relation in content["relationships"]:
            self.assertLessEqual({relation["spdxElementId"], relation["relatedSpdxElement"]}, identifiers)
        self.assertEqual({each["fileName"] for each in content["files"]},
                         {"./" + product(kind).name for kind in KINDS[:4]})
        versions = {each["name"]: each["versionInfo"] for each in content["packages"]}
        self.assertEqual(versions["zelvreg"], version())
        self.assertEqual(set(versions), {"zelvreg", *(part.name for part in licences.PARTS)})
        for each in content["packages"]:
            self.assertNotIn(each["licenseConcluded"], ("", "NOASSERTION", "NONE"))

    def test_the_programs_for_windows_need_only_windows(self):
        done = subprocess.run(["i686-w64-mingw32-objdump", "-p", Given.build / "zelvreg.exe"], text=True,
                              stdout=subprocess.PIPE, check=True)
        libraries = {line.split()[-1].lower() for line in done.stdout.splitlines() if "DLL Name" in line}
        self.assertIn("kernel32.dll", libraries)
        self.assertEqual({name for name in libraries if name.startswith(("lib", "hivex"))}, set())


class SignatureTest(unittest.TestCase):
    """With a certificate that is good for nothing else."""

    @classmethod
    def setUpClass(cls):
        folder = Given.work / "certificate"
        folder.mkdir()
        (folder / "password").write_text("only for this test", "ascii")
        for command in (
                ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=zelvreg test", "-days",
                 "2", "-keyout", "key.pem", "-out", "certificate.pem", "-addext", "extendedKeyUsage=codeSigning"],
                ["openssl", "pkcs12", "-export", "-inkey", "key.pem", "-in", "certificate.pem", "-out", "both.p12",
                 "-passout", "file:password"]):
            subprocess.run(command, cwd=folder, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        cls.certificate = folder / "certificate.pem"
        os.environ.update({windows.CERTIFICATE: str(folder / "both.p12"),
                           windows.PASSWORD: str(folder / "password")})
        try:
            release = another_release("signed", version())
            windows.stage(release)
            cls.signed = [release.stage / name for name in windows.PROGRAMS] + [setup.make(release)]
        finally:
            for name in (windows.CERTIFICATE, windows.PASSWORD):
                del os.environ[name]

    def verified(self, path):
        return subprocess.run(["osslsigncode", "verify", "-CAfile", self.certificate, "-in", path],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode == 0

    def test_programs_and_set_up_are_signed(self):
        for path in self.signed:
            self.assertTrue(self.verified(path), path.name)

    def test_a_changed_byte_is_noticed(self):
        path = self.signed[0]
        content = bytearray(path.read_bytes())
        content[len(content) // 2] ^= 1
        changed = path.with_name("changed.exe")
        changed.write_bytes(content)
        self.assertFalse(self.verified(changed))

    def test_without_a_certificate_nothing_is_signed(self):
        self.assertFalse(self.verified(product("-setup.exe")))


class ReproductionTest(unittest.TestCase):
    def test_another_clone_makes_the_same(self):
        if not Given.takes_long:
            self.skipTest("a second release takes minutes; --all makes it")
        clone = Path(Given.work, "clone")
        subprocess.run(["git", "clone", "-q", CHECKOUT, clone], check=True)
        again = Given.work / "again"
        subprocess.run([clone / "tools" / "release", again], check=True, stdout=subprocess.DEVNULL)
        for kind in ("-setup.exe", "-portable.zip", ".deb"):
            first, second = product(kind), again / product(kind).name
            self.assertEqual(first.read_bytes(), second.read_bytes(), first.name)
        self.assertEqual(tables(product(".msi")), tables(again / product(".msi").name))
