// What is found only by way of other keys: variables, a product, a group of services, a component.
#include <array>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string controlSet = "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\";
const std::string software = machineSoftware;

void writeVariables(const Making& making) {
  making.registry.container(controlSet + "Control\\Session Manager\\Environment");
  making.registry.expandableText("ComSpec", "%SystemRoot%\\system32\\cmd.exe");
  making.registry.text("COMPANYTOOLS", "C:\\Company Tools");
  making.registry.expandableText(
      "Path", "%SystemRoot%\\system32;%SystemRoot%;C:\\Program Files\\Path Tools");
  making.registry.text("PATHEXT", ".COM;.EXE;.BAT;.CMD;.VBS;.JS");
  making.registry.container("HKEY_CURRENT_USER\\Environment");
  making.registry.text("TOOLSOFANN", "C:\\Tools of Ann");
  making.registry.text("Path", "C:\\Tools of Ann\\bin");
  making.registry.expandableText("NESTEDTOOLS", "%LOCALAPPDATA%\\Tools");
  making.registry.expandableText("LOOPONE", "%LOOPTWO%");
  making.registry.expandableText("LOOPTWO", "%LOOPONE%");
}

void writeUsersPrograms(const Making& making) {
  making.registry.container(std::string(userSoftware) + windowsKey +
                            "\\App Paths\\onuserapppaths.exe");
  making.registry.text("", "C:\\Tools of Ann\\onuserapppaths.exe");
}

void writeProduct(const Making& making) {
  // The installer writes the digits of each group of the code in turned order.
  constexpr const char* packedCode = "8765432143214324284321436587A9CB";
  making.registry.container(software + "\\Classes\\Installer\\Products\\" + packedCode);
  making.registry.text("ProductName", "Product of the installer");
  making.registry.container(software + windowsKey + "\\Installer\\UserData\\S-1-5-18\\Products\\" +
                            packedCode + "\\InstallProperties");
  making.registry.text("DisplayName", "Product of the installer");
}

void writeServices(const Making& making) {
  constexpr std::array<std::string_view, 1> group{"VendorService"};
  making.registry.container(software + "\\Microsoft\\Windows NT\\CurrentVersion\\Svchost");
  making.registry.texts("VendorServices", group);
  making.registry.container(controlSet + "services\\VendorService");
  making.registry.expandableText("ImagePath",
                                 "%SystemRoot%\\System32\\svchost.exe -k VendorServices");
  making.registry.container(controlSet + "services\\VendorService\\Parameters");
  making.registry.expandableText("ServiceDll", "C:\\Company Tools\\tool.dll");
}

void writeSurrogate(const Making& making) {
  constexpr const char* id = "{D1100000-0000-4000-8000-000000000001}";
  making.registry.container(software + "\\Classes\\AppID\\" + id);
  making.registry.text("DllSurrogate", "");
  making.registry.container(software + "\\Classes\\CLSID\\" + id);
  making.registry.text("AppID", id);
  making.registry.container(software + "\\Classes\\CLSID\\" + id + "\\InprocServer32");
  making.registry.text("", "C:\\Company Tools\\tool.dll");
}

}  // namespace

void writeEnvironment(const Making& making) {
  writeVariables(making);
  writeUsersPrograms(making);
  writeProduct(making);
  writeServices(making);
  writeSurrogate(making);
}

}  // namespace zelvreg::bench
