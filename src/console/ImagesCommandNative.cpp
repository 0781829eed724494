#include <sys/time.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "console/DisplayText.h"
#include "console/FormUse.h"
#include "console/ImagesCommand.h"
#include "console/ScanArguments.h"
#include "console/Terminal.h"
#include "console/TimeArguments.h"
#include "images/ImageLayers.h"
#include "images/ImageList.h"
#include "images/ImagePrograms.h"
#include "images/ImageResult.h"
#include "images/OwnMounts.h"
#include "json/JsonText.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/base/RunApart.h"
#include "scan/CategoryTable.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;
using images::ImageResult;
using machine::MachineError;

// The options that decide what a result holds, always in the same order.
std::vector<std::string> optionsOf(const Options& options) {
  std::vector<std::string> words;
  if (options.rows != allRows()) {
    std::string names;
    for (const std::size_t row : options.rows) {
      names += (names.empty() ? "" : ",") + std::string(categoryAt(row).optionName);
    }
    words.push_back("--only " + names);
  }
  const Target& target = options.target;
  if (target.everyUser || !target.user.empty()) {
    words.push_back("--user " + (target.everyUser ? "all" : target.user));
  }
  if (target.partition) words.push_back("--partition " + std::to_string(*target.partition));
  if (target.leavesLogs) words.emplace_back("--as-is");
  if (target.missingDrivesAreDead) words.emplace_back("--missing-drives dead");
  std::set<std::string> lifted;
  for (const SafeguardChoice& choice : options.safeguardChoices) {
    lifted.insert(choice.option);
  }
  words.insert(words.end(), lifted.begin(), lifted.end());
  return words;
}

// A result begins with what it is of and how it was made, so that a later run can tell that without
// reading it all.
ImageResult imageResultOf(const Options& options, const fs::path& image) {
  nlohmann::ordered_json object;
  object["image"] = {{"file", image.string()}, {"options", optionsOf(options)}};
  const std::string text = textOfJson(std::move(object));
  const std::string own = text.substr(0, text.rfind("\n}")) + ",";
  return {options.images.resultsFolder,
          image,
          {.ofImage = own.substr(0, own.rfind("\"options\"")),
           .ofOptions = own,
           .ofFailure = printable(image.string()) + ": "}};
}

std::vector<machine::FileStamp> stampsOf(const std::vector<fs::path>& files) {
  std::vector<machine::FileStamp> stamps;
  for (const fs::path& file : files) {
    std::error_code error;
    stamps.push_back(machine::stampOf(fs::canonical(file, error)));
  }
  return stamps;
}

// What waits for a disk that does not answer looks at no clock. A scan that is given up by itself
// has told so long before.
void endProcessAfter(std::chrono::duration<double> limit) {
  constexpr std::chrono::seconds grace{10};
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(std::ceil((limit + grace).count()));
  setitimer(ITIMER_REAL, &timer, nullptr);
}

// What the program writes when it ends by itself begins with its name.
std::string withoutProgram(const std::string& line) {
  constexpr std::string_view program = "zelvreg: ";
  return line.starts_with(program) ? line.substr(program.size()) : line;
}

// The JSON of a scan, and what is to be said of it.
struct Scanned {
  std::string json;
  std::string words;
};

Scanned scanImage(const Options& options, const Streams& streams) {
  std::ostringstream out;
  std::ostringstream error;
  const Streams own{.out = out, .error = error, .tables = streams.tables};
  const auto computer = Computer::open(options.target);
  const int status = runCommand(options, *computer, own);
  computer->close();
  return {
      .json = out.str(),
      .words = status == nothingFound ? "nothing was found"
               : status == problemsFound
                   ? "problems were found"
                   : "was scanned in part" + (own.told->empty() ? "" : ": " + own.told->back())};
}

constexpr const char* notInTime = "did not end within --timeout; give it more time";

// In the process of this image alone. Gives what is to be said of it.
std::string makeResult(Options options, const ImageResult& result, const Streams& streams) {
  if (options.images.limit) {
    options.deadline = TimeArguments::deadlineAfter(*options.images.limit);
    endProcessAfter(*options.images.limit);
  }
  result.removeLeftovers();
  const std::vector<fs::path> parts = images::filesOf(result.image());
  if (!options.images.scansAgain && result.isNewerThan(parts)) {
    result.removeFailure();
    return "has a result that is newer";
  }
  const auto stamps = stampsOf(parts);
  options.command = Command::Scan;
  options.format = Format::Json;
  options.target.image = result.image().string();
  try {
    const Scanned scanned = scanImage(options, streams);
    if (stampsOf(parts) != stamps) {
      throw MachineError("was written while it was scanned; run this again");
    }
    result.keep(result.expected().ofOptions + scanned.json.substr(1));
    return scanned.words;
  } catch (const std::exception&) {
    if (isGivenUp(options)) throw MachineError(isStopRequested() ? howGivenUp() : notInTime);
    throw;
  }
}

std::string whyStopped(const machine::WorkStopped& end) {
  if (end.signal == SIGALRM) return notInTime;
  if (end.signal != 0) {
    return "its scan was ended by signal " + std::to_string(end.signal) + " (" +
           strsignal(end.signal) + "); see that there is enough memory, and run this again";
  }
  return end.lastWords.empty() ? "its scan ended without a result; run this again"
                               : withoutProgram(end.lastWords);
}

class ImageRun {
 public:
  ImageRun(const Options& optionsInUse, std::vector<ImageResult> given, const Streams& streamsInUse)
      : options(optionsInUse), all(std::move(given)), streams(streamsInUse) {}

  int go() {
    std::size_t done = 0;
    bool isWhole = true;
    for (const ImageResult& result : all) {
      const bool hasResult = scan(result);
      isWhole = isWhole && hasResult;
      done += hasResult || !isStopRequested() ? 1 : 0;
      if (isStopRequested()) break;
    }
    if (done < all.size()) {
      throw std::runtime_error("cancelled after " + std::to_string(done) + " of " +
                               std::to_string(all.size()) + " images; run this again to go on");
    }
    return isWhole || options.exitsZero ? nothingFound : failed;
  }

 private:
  bool scan(const ImageResult& result) {
    try {
      const std::string words =
          machine::runApart([&] { return makeResult(options, result, streams); });
      if (!options.isQuiet) say(result, words);
      return true;
    } catch (const machine::WorkStopped& end) {
      return fail(result, whyStopped(end));
    } catch (const MachineError& error) {
      return fail(result, error.what());
    }
  }

  // Some lines begin with the image's name already.
  bool fail(const ImageResult& result, std::string why) {
    if (isStopRequested()) return false;
    const std::string name = result.image().string() + ": ";
    why.erase(0, why.starts_with(name) ? name.size() : 0);
    say(result, why);
    try {
      result.keepFailure(result.expected().ofFailure + printable(why));
    } catch (const MachineError&) {
      // Where no result can be written, no failure can either. It was said; the others go on.
    }
    return false;
  }

  void say(const ImageResult& result, const std::string& words) {
    tell({result.image().string() + ": " + words}, streams);
  }

  const Options& options;
  std::vector<ImageResult> all;
  const Streams& streams;
};

// What would be wrong with every image is said once, and makes no failures of them.
void requireMounting() {
  images::requirePrograms();
  machine::runApart([] { return images::ownMountFolder().string(); });
}

void requireFolder(const std::string& folder) {
  std::error_code error;
  fs::create_directory(folder, error);
  if (!fs::is_directory(folder)) {
    throw MachineError(folder + ": is no folder and cannot be made one; name one for the results");
  }
}

}  // namespace

bool canScanImages() { return true; }

int scanImages(const Options& options, std::istream& input, const Streams& streams) {
  requireMounting();
  const std::vector<fs::path> listed = images::imagesListed(options.images.lists, input);
  images::refuseNames(listed);
  requireFolder(options.images.resultsFolder);
  std::vector<ImageResult> results;
  for (const fs::path& image : listed) {
    results.push_back(imageResultOf(options, image));
    if (!options.images.scansAgain) {
      results.back().refuseOther();
    }
  }
  return ImageRun(options, std::move(results), streams).go();
}

}  // namespace zelvreg::console
