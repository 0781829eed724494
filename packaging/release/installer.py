"""The package of the Windows Installer, made by wixl."""

import os
import uuid
from xml.etree import ElementTree

from . import windows
from .product import (EVENT_KEY, EVENT_PROGRAM, EVENT_TYPES, FOLDER_ACCESS, PASSING, PROGRAM_KEY,
                      facts, run)

NAMESPACE = "http://schemas.microsoft.com/wix/2006/wi"
LOCK_TABLE = "\r\n".join((
    "MsiLockPermissionsEx\tLockObject\tTable\tSDDLText\tCondition",
    "s72\ts72\ts32\ts0\tS255",
    "MsiLockPermissionsEx\tMsiLockPermissionsEx",
    f"access\tINSTALLFOLDER\tCreateFolder\t{FOLDER_ACCESS}\t", ""))
REMOVE_TABLE = "\r\n".join((
    "FileKey\tComponent_\tFileName\tDirProperty\tInstallMode",
    "s72\ts72\tL255\ts72\ti2",
    "RemoveFile\tFileKey",
    *(f"passing{number}\tMain\t{name}\tINSTALLFOLDER\t2" for number, name in enumerate(PASSING)),
    # Without a name it is the folder itself.
    "menu\tShortcuts\t\tMENU\t2", ""))


def node(parent, tag, **attributes):
    return ElementTree.SubElement(parent, tag, attributes)


class Package:
    def __init__(self, release):
        self.release = release
        self.folder = release.work / "installer"
        self.about = facts()
        self.family = uuid.UUID(self.about["upgrade-code"])
        self.root = ElementTree.Element("Wix", xmlns=NAMESPACE)
        self.product = node(
            self.root, "Product", Id=self.code("product " + release.version), Name="zelvreg",
            Language="1033", Version=release.version, Manufacturer=self.about["publisher"],
            UpgradeCode=str(self.family).upper())
        self.components = []
        self._facts()
        self._files()
        self._features()

    def code(self, name):
        """The same for each release of a version, or for all versions of a file."""
        return str(uuid.uuid5(self.family, name)).upper()

    def _relative(self, path):
        """wixl takes no other paths."""
        return os.path.relpath(path, self.folder)

    def _facts(self):
        node(self.product, "Package", InstallerVersion="500", Compressed="yes", InstallScope="perMachine",
             Description="Fix Registry Problems", Manufacturer=self.about["publisher"])
        node(self.product, "MajorUpgrade",
             DowngradeErrorMessage="A newer version of zelvreg is installed. Remove it first.")
        node(self.product, "Media", Id="1", Cabinet="zelvreg.cab", EmbedCab="yes")
        node(self.product, "Condition",
             Message="zelvreg needs Windows 7 or later.").text = "VersionNT >= 601"
        by_setup = node(self.product, "Property", Id="INSTALLEDBY")
        node(by_setup, "RegistrySearch", Id="InstalledBy", Root="HKLM", Key=PROGRAM_KEY,
             Name="InstalledBy", Type="raw")
        node(self.product, "Condition", Message="zelvreg was installed by its set-up program. Remove "
             "that first.").text = 'NOT INSTALLEDBY OR INSTALLEDBY <> "Set-up" OR Installed'
        node(self.product, "Icon", Id="zelvreg.ico",
             SourceFile=self._relative(self.release.windows / "pictures" / "zelvreg.ico"))
        for name, value in (("ARPPRODUCTICON", "zelvreg.ico"), ("ARPNOMODIFY", "1"),
                            ("ARPURLINFOABOUT", self.about["homepage"])):
            node(self.product, "Property", Id=name, Value=value)

    def _component(self, folder, name, **attributes):
        self.components.append(name)
        return node(folder, "Component", Id=name, Guid=self.code(name), **attributes)

    def _files(self):
        target = node(self.product, "Directory", Id="TARGETDIR", Name="SourceDir")
        programs = node(target, "Directory", Id="ProgramFilesFolder")
        folders = {".": node(programs, "Directory", Id="INSTALLFOLDER", Name="zelvreg")}
        self._main(folders["."], target)
        for number, path in enumerate(windows.files(self.release)):
            parent = folders[str(path.parent)]
            source = self.release.stage / path
            if source.is_dir():
                folders[str(path)] = node(parent, "Directory", Id=f"folder{number}", Name=path.name)
            else:
                # The code goes with the name, whatever else a version has.
                component = self._component(parent, "file_" + self.code(path.as_posix())[:8])
                node(component, "File", Id=f"file{number}", Name=path.name,
                     Source=self._relative(source), KeyPath="yes")

    def _main(self, folder, target):
        menu = node(node(target, "Directory", Id="ProgramMenuFolder"), "Directory", Id="MENU",
                    Name="zelvreg")
        main = self._component(folder, "Main")
        node(main, "CreateFolder")
        node(main, "RegistryValue", Root="HKLM", Key=PROGRAM_KEY, Name="InstalledBy", Type="string",
             Value="Windows Installer", KeyPath="yes")
        node(main, "RegistryValue", Root="HKLM", Key=EVENT_KEY, Name="EventMessageFile",
             Type="expandable", Value=f"[INSTALLFOLDER]{EVENT_PROGRAM}")
        node(main, "RegistryValue", Root="HKLM", Key=EVENT_KEY, Name="TypesSupported",
             Type="integer", Value=str(EVENT_TYPES))
        shortcuts = self._component(menu, "Shortcuts")
        for name, file in (("Fix Registry Problems", "zelvreg.exe"), ("Help", "zelvhelp.chm")):
            node(shortcuts, "Shortcut", Id=file.replace(".", "_"), Directory="MENU", Name=name,
                 Target=f"[INSTALLFOLDER]{file}", WorkingDirectory="INSTALLFOLDER")
        node(shortcuts, "RegistryValue", Root="HKLM", Key=PROGRAM_KEY, Name="Shortcuts", Type="string",
             Value="1", KeyPath="yes")

    def _features(self):
        feature = node(self.product, "Feature", Id="All", Title="zelvreg", Level="1")
        for name in self.components:
            node(feature, "ComponentRef", Id=name)


def make(release):
    package = Package(release)
    folder = package.folder
    folder.mkdir()
    source, target = folder / "zelvreg.wxs", release.product(".msi")
    ElementTree.ElementTree(package.root).write(source, "utf-8", xml_declaration=True)
    run("wixl", "--arch", "x86", "-o", target, source,
        env={**os.environ, "SOURCE_DATE_EPOCH": str(release.epoch)})
    # Tables that wixl has no words for.
    for name, rows in (("MsiLockPermissionsEx", LOCK_TABLE), ("RemoveFile", REMOVE_TABLE)):
        table = folder / f"{name}.idt"
        table.write_bytes(rows.encode("ascii"))
        run("msibuild", target, "-i", table)
    windows.sign(release, target)
    return target
