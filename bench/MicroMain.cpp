// The steps that a scan takes hundreds of thousands of times, each on its own.
#include <benchmark/benchmark.h>
#include <windows.h>

#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "MachineMaker.h"
#include "WorkFolder.h"
#include "console/Computer.h"
#include "form/Form42.h"
#include "registry/View64.h"
#include "scan/Resolver.h"
#include "shell/StartUp.h"

namespace {

constexpr const char* versionKey = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

void openKey(benchmark::State& state) {
  for (auto _ : state) {
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE,
                  u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\program00001.exe", 0,
                  KEY_QUERY_VALUE | KEY_WOW64_64KEY, &key);
    benchmark::DoNotOptimize(key);
    RegCloseKey(key);
  }
}

void readText(benchmark::State& state) {
  zelvreg::Form42 form;
  zelvreg::Form_Load(form);
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        zelvreg::GetKeyValue64(form, zelvreg::HiveHandle::LocalMachine, versionKey, "SystemRoot"));
  }
}

void resolvePath(benchmark::State& state) {
  zelvreg::Form42 form;
  zelvreg::Form_Load(form);
  for (auto _ : state) {
    std::string path = "C:\\Program Files\\Vendor 0000\\Product 1\\app00001.exe";
    benchmark::DoNotOptimize(zelvreg::GetPath(form, path));
  }
}

void testFile(benchmark::State& state) {
  zelvreg::Form42 form;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        zelvreg::FileExists(form, "C:\\Program Files\\Vendor 0000\\Product 1\\app00001.exe"));
  }
}

BENCHMARK(openKey);
BENCHMARK(readText);
BENCHMARK(resolvePath);
BENCHMARK(testFile);

}  // namespace

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
    return 2;
  }
  try {
    const zelvreg::bench::WorkFolder folder;
    zelvreg::bench::makeMachine(folder.path(), {.keys = zelvreg::bench::fewestKeys});
    zelvreg::console::Target target;
    target.machineFolder = folder.path().string();
    const auto computer = zelvreg::console::Computer::open(target);
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception& error) {
    std::cerr << "zelvreg-micro-bench: " << error.what() << "\n";
    return 2;
  }
  return 0;
}
