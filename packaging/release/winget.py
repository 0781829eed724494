"""The three files that tell winget of a release."""

import uuid

import yaml

from .installer import Package
from .product import facts, sha256

SCHEMA = "1.28.0"


def header(kind):
    return (f"# yaml-language-server: $schema=https://aka.ms/winget-manifest.{kind}.{SCHEMA}"
            ".schema.json\n")


def installers(release):
    about = facts()

    def address(path):
        return f"{about['downloads']}/{release.version}/{path.name}"

    setup, package = release.product("-setup.exe"), release.product(".msi")
    code = Package(release)
    yield {"Architecture": "x86", "InstallerType": "nullsoft", "Scope": "machine",
           "InstallerUrl": address(setup), "InstallerSha256": sha256(setup).upper(),
           "ElevationRequirement": "elevatesSelf",
           "AppsAndFeaturesEntries": [{"DisplayName": "zelvreg - Fix Registry Problems",
                                       "Publisher": about["publisher"], "ProductCode": "zelvreg"}]}
    yield {"Architecture": "x86", "InstallerType": "wix", "Scope": "machine",
           "InstallerUrl": address(package), "InstallerSha256": sha256(package).upper(),
           "ProductCode": "{" + code.code("product " + release.version) + "}",
           "AppsAndFeaturesEntries": [{"DisplayName": "zelvreg", "Publisher": about["publisher"],
                                       "UpgradeCode": "{" + str(uuid.UUID(about["upgrade-code"])).upper() + "}"}]}


def manifests(release):
    """(kind, suffix of the file, content)"""
    about = facts()
    common = {"PackageIdentifier": about["winget"], "PackageVersion": release.version}

    def end(kind):
        return {"ManifestType": kind, "ManifestVersion": SCHEMA}

    yield "version", "", {**common, "DefaultLocale": "en-US", **end("version")}
    yield "defaultLocale", ".locale.en-US", {
        **common, "PackageLocale": "en-US", "Publisher": about["publisher"],
        "PublisherUrl": about["homepage"], "PackageName": "zelvreg", "License": "MIT",
        "ShortDescription": "Finds entries of the registry that refer to something that no longer "
                            "exists, says how sure that is, and removes them with undo.",
        "Moniker": "zelvreg", "Tags": ["registry", "cleanup", "administration"],
        **end("defaultLocale")}
    yield "installer", ".installer", {
        **common, "MinimumOSVersion": "6.1.7601.0", "InstallModes": ["interactive", "silent"],
        "UpgradeBehavior": "install", "ReleaseDate": release.time.date().isoformat(),
        "Installers": list(installers(release)), **end("installer")}


def make(release):
    folder = release.product("-winget")
    folder.mkdir()
    for kind, suffix, content in manifests(release):
        path = folder / f"{facts()['winget']}{suffix}.yaml"
        path.write_text(header(kind) + yaml.safe_dump(content, sort_keys=False, allow_unicode=True),
                        "utf-8")
    return folder
