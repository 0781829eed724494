#include "console/LanguageCheckCommand.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

#include "console/DisplayText.h"
#include "console/HostFile.h"
#include "json/JsonText.h"
#include "languages/Charset.h"
#include "languages/readlangfile.h"
#include "runtime/OwnText.h"
#include "translation/LanguageCheck.h"

namespace zelvreg::console {
namespace {

constexpr const char* englishTag = "english";

std::string besideIt(const std::string& path, const char* name) {
  return path.substr(0, path.find_last_of("/\\") + 1) + name;
}

std::optional<std::string> contentOf(const std::string& path) {
  try {
    return readHostFile(path);
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

int charsetOf(const Options& options, const std::string& bytes) {
  const std::string& path = options.languageFile;
  if (options.charset) {
    return *options.charset;
  }
  const auto list = contentOf(besideIt(path, "data.lang"));
  const auto listed = list ? charsetInList(*list, tagOfFile(path)) : std::nullopt;
  if (!listed && !bytes.starts_with(utf8Mark)) {
    throw std::runtime_error(path +
                             ": its charset is not known, because no data.lang beside it lists the "
                             "language; give --charset N, such as 0 for Western or 238 for Central "
                             "European languages");
  }
  return listed.value_or(0);
}

void printLines(const std::string& path, const std::vector<LanguageFinding>& findings,
                const Streams& streams) {
  for (const LanguageFinding& finding : findings) {
    const std::string place = finding.line == 0 ? path : path + ":" + std::to_string(finding.line);
    streams.out << printable(place + (isHint(finding.problem) ? ": hint: " : ": ") +
                             sentenceOf(finding))
                << "\n";
  }
}

void printJson(const std::string& path, int charset, bool isUtf8,
               const std::vector<LanguageFinding>& findings, const Streams& streams) {
  nlohmann::ordered_json object;
  object["file"] = path;
  object["charset"] = charset;
  object["codePage"] = isUtf8 ? CP_UTF8 : codePageOfCharset(charset);
  object["problems"] = nlohmann::ordered_json::array();
  for (const LanguageFinding& finding : findings) {
    object["problems"].push_back({{"kind", codeOf(finding.problem)},
                                  {"hint", isHint(finding.problem)},
                                  {"line", finding.line},
                                  {"section", finding.section},
                                  {"key", finding.key},
                                  {"text", sentenceOf(finding)}});
  }
  streams.out << textOfJson(object);
}

}  // namespace

int checkLanguage(const Options& options, const Streams& streams) {
  const std::string& path = options.languageFile;
  const std::string bytes = readHostFile(path);
  const int charset = charsetOf(options, bytes);
  // Without the English file the program's own texts are compared, which are most of them.
  const LanguageFile english =
      LanguageFile::ofBytes(contentOf(besideIt(path, "zelvreg-english.lang")).value_or(""), 0);
  const std::vector<LanguageFinding> findings =
      checkLanguageFile(bytes, charset, tagOfFile(path) == englishTag ? nullptr : &english);
  if (options.format == Format::Json) {
    printJson(path, charset, bytes.starts_with(utf8Mark), findings, streams);
  } else {
    printLines(path, findings, streams);
  }
  const bool isClean = std::ranges::all_of(
      findings, [](const LanguageFinding& finding) { return isHint(finding.problem); });
  return isClean || options.exitsZero ? nothingFound : problemsFound;
}

}  // namespace zelvreg::console
