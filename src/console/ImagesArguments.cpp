#include "console/ImagesArguments.h"
#include "console/ImagesCommand.h"
#include "console/OptionGroups.h"
#include "console/SafeguardArguments.h"
#include "console/ScanArguments.h"

namespace zelvreg::console {

const char* ImagesArguments::group() { return canScanImages() ? "Look" : ""; }

void ImagesArguments::addTo(CLI::App& images, Options& options) {
  ImagesOptions& chosen = options.images;
  images
      .add_option("LIST", chosen.lists,
                  "an image file, a folder with images, a text file that names one in each line, "
                  "or - for such lines on standard input")
      ->required(canScanImages());
  images
      .add_option("--results", chosen.resultsFolder,
                  "folder that gets NAME.json, or NAME.error, for each image")
      ->type_name("DIR")
      ->required(canScanImages())
      ->group(outputGroup);
  images
      .add_flag("--again", chosen.scansAgain,
                "also scan images that have a result which is newer than they are")
      ->group(outputGroup);
  images.add_flag("--quiet", options.isQuiet, "print nothing but failures")->group(outputGroup);
  images
      .add_flag("--exit-zero", options.exitsZero,
                "end with 0 even if images have failed, which their NAME.error tells")
      ->group(outputGroup);
  onlyOption =
      images.add_option("--only", only, "scan only these, separated by commas: " + categoryNames())
          ->type_name("NAMES")
          ->group("Which categories");
  timeOption = images
                   .add_option("--timeout", seconds,
                               "give up an image after this time, and go on with the next")
                   ->type_name("SECONDS")
                   ->group("Limits");
  NowArgument::addTo(images, options.now);
  SafeguardArguments::addTo(
      images, {&Safeguards::touches, &Safeguards::asksShares, &Safeguards::asksService}, options);
}

void ImagesArguments::applyTo(Options& options) const {
  if (!canScanImages()) {
    throw UsageError(
        "images works only in the program for Linux; use scan here, which scans this computer");
  }
  options.command = Command::ScanImages;
  options.areRowsNamed = onlyOption->count() > 0;
  options.rows = options.areRowsNamed ? rowsNamed(only) : allRows();
  if (timeOption->count() > 0) {
    options.images.limit = TimeArguments::limitOf(seconds);
  }
}

}  // namespace zelvreg::console
