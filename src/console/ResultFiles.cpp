#include "console/ResultFiles.h"

#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>

#include "console/HostReplace.h"
#include "console/MergeArguments.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

bool isFailureNote(const fs::path& file) {
  return lowerCase(hostText(file.extension())) == ".error";
}

bool isOfResults(const fs::path& file) {
  const std::string ending = lowerCase(hostText(file.extension()));
  return ending == ".json" || ending == ".jsonl" || isFailureNote(file);
}

fleet::ResultSource sourceOf(const fs::path& file) {
  const auto open = [file]() -> std::unique_ptr<std::istream> {
    std::error_code error;
    auto stream = std::make_unique<std::ifstream>(file, std::ios::binary);
    return stream->is_open() && !fs::is_directory(file, error) ? std::move(stream) : nullptr;
  };
  return {.path = hostText(file),
          .file = hostText(file.filename()),
          .isFailureNote = isFailureNote(file),
          .open = open};
}

// The results in a folder.
std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::error_code unknown;
    if (isOfResults(entry->path()) && !entry->is_directory(unknown)) {
      files.push_back(entry->path());
    }
  }
  if (error) {
    throw std::runtime_error(hostText(folder) + " cannot be read; check who may read it");
  }
  if (files.empty()) {
    throw std::runtime_error(hostText(folder) +
                             " holds no results; their names end in .json or .jsonl");
  }
  return files;
}

}  // namespace

SpooledInput::~SpooledInput() {
  std::error_code error;
  if (!folder.empty()) {
    fs::remove_all(folder, error);
  }
}

const fs::path& SpooledInput::take(std::istream& input) {
  std::random_device random;
  const fs::path place = fs::temp_directory_path() /
                         ("zelvreg-" + std::to_string(random()) + "-" + std::to_string(random()));
  // Nobody else has made it, so nobody else's links are in it.
  if (!fs::create_directory(place)) {
    throw std::runtime_error("standard input cannot be kept in " + hostText(place.parent_path()) +
                             "; run the command again");
  }
  folder = place;
  fs::permissions(folder, fs::perms::owner_all);
  file = folder / "input";
  std::ofstream kept(file, std::ios::binary);
  // Nothing at all would set an error.
  if (input.peek() != std::istream::traits_type::eof()) {
    kept << input.rdbuf();
  }
  kept.close();
  if (!kept) {
    throw std::runtime_error("standard input cannot be kept in " + hostText(place.parent_path()) +
                             "; check the free disk space");
  }
  return file;
}

std::vector<fleet::ResultSource> resultSources(const std::vector<std::string>& arguments,
                                               std::istream& input, SpooledInput& spooled) {
  std::vector<fleet::ResultSource> sources;
  std::set<fs::path> known;
  const auto add = [&](const fs::path& file) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(file, error);
    if (known.insert(error ? file : whole).second) {
      sources.push_back(sourceOf(file));
    }
  };
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (argument == standardStream) {
      if (known.insert(standardStream).second) {
        sources.push_back(sourceOf(spooled.take(input)));
        sources.back().path = sources.back().file = "standard input";
      }
    } else if (fs::is_directory(hostPath(argument), error)) {
      for (const fs::path& file : filesIn(hostPath(argument))) {
        add(file);
      }
    } else {
      add(hostPath(argument));
    }
  }
  return sources;
}

}  // namespace zelvreg::console
