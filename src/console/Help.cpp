#include "console/Help.h"

#include <algorithm>
#include <functional>

#include "console/DisplayText.h"
#include "console/TargetArguments.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

constexpr std::size_t entryIndent = 2;
constexpr std::size_t descriptionColumn = 26;
// Below this, what stands beside an entry would be torn to single words.
constexpr std::size_t narrowest = 40;
constexpr std::size_t hangingIndent = 4;

std::size_t leadingBlanks(std::string_view line) {
  return std::min(line.find_first_not_of(' '), line.size());
}

// The line broken between words. What follows the first line is indented more.
std::string wrapped(std::string_view line, std::size_t indent, std::size_t width) {
  std::string result(leadingBlanks(line), ' ');
  std::size_t used = result.size();
  bool isFirst = true;
  for (const std::string_view word : split(trim(line), " ")) {
    const std::size_t size = displayWidth(word);
    if (!isFirst && used + 1 + size > width) {
      result += "\n" + std::string(indent, ' ');
      used = indent;
    } else if (!isFirst) {
      result += ' ';
      ++used;
    }
    result += word;
    used += size;
    isFirst = false;
  }
  return result + "\n";
}

// What an entry means stands beside it, or below it where there is no room.
std::string entryText(const std::string& entry, const std::string& meaning,
                      const HelpLayout& layout) {
  const std::size_t indent = layout.width < narrowest ? 2 * hangingIndent : descriptionColumn;
  std::string line = std::string(entryIndent, ' ') + entry;
  if (meaning.empty()) {
    return line + "\n";
  }
  const std::string text = wrapped(std::string(indent, ' ') + meaning, indent, layout.width);
  if (displayWidth(line) + 2 > indent) {
    return line + "\n" + text;
  }
  line.resize(indent, ' ');
  return line + text.substr(indent);
}

std::string heading(const std::string& text, const HelpLayout& layout) {
  return "\n" + layout.paint.in(Ink::Heading, text) + "\n";
}

std::string joined(const std::vector<std::string>& texts, const char* between) {
  std::string result;
  for (const std::string& text : texts) {
    result += (result.empty() ? "" : between) + text;
  }
  return result;
}

std::string entryOf(const CLI::Option& option) {
  const std::string names = joined(namesOf(option), ", ");
  const std::string value = placeholderOf(option);
  return names + (names.empty() || value.empty() ? "" : " ") + value;
}

std::string argumentsOf(const CLI::App& app) {
  std::string text;
  for (const CLI::Option* argument : shownArguments(app)) {
    const bool canBeRepeated = argument->get_items_expected_max() > 1;
    const std::string name = placeholderOf(*argument) + (canBeRepeated ? "..." : "");
    text += argument->get_required() ? " " + name : " [" + name + "]";
  }
  return text;
}

std::string usageOf(const CLI::App& app) {
  std::string text = fullNameOf(app);
  if (app.get_parent() == nullptr) {
    return text + TargetArguments::usage() + " COMMAND [OPTIONS]";
  }
  text += shownOptions(app).size() > 1 ? " [OPTIONS]" : "";
  text += argumentsOf(app);
  if (!shownCommands(app).empty()) {
    text += app.get_require_subcommand_min() > 0 ? " COMMAND" : " [COMMAND]";
  }
  return text;
}

std::string groupOf(const CLI::App& command) { return command.get_group(); }
std::string groupOf(const CLI::Option& option) {
  return option.get_positional() ? "Arguments" : option.get_group();
}

// The entries of each group, the groups in the order in which they first occur.
template <typename Item>
std::string grouped(const std::vector<const Item*>& items,
                    const std::function<std::string(const Item&)>& entry,
                    const HelpLayout& layout) {
  std::vector<std::string> groups;
  for (const Item* item : items) {
    if (std::ranges::find(groups, groupOf(*item)) == groups.end()) {
      groups.push_back(groupOf(*item));
    }
  }
  std::string text;
  for (const std::string& group : groups) {
    text += heading(group, layout);
    for (const Item* item : items) {
      if (groupOf(*item) == group) {
        text += entryText(entry(*item), item->get_description(), layout);
      }
    }
  }
  return text;
}

}  // namespace

std::string placeholderOf(const CLI::Option& option) {
  if (option.get_positional()) {
    return option.get_single_name();
  }
  // What checks a value is told behind a colon.
  const std::string type = option.get_type_name();
  return option.get_items_expected_max() == 0 ? "" : type.substr(0, type.find(':'));
}

std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) {
    names.push_back("-" + name);
  }
  for (const std::string& name : option.get_lnames()) {
    names.push_back("--" + name);
  }
  return names;
}

std::vector<const CLI::Option*> shownOptions(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

std::vector<const CLI::Option*> shownArguments(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::App*> shownCommands(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

const CLI::App* commandBelow(const CLI::App& app, const std::string& name) {
  const auto commands =
      app.get_subcommands([&](const CLI::App* one) { return one->get_name() == name; });
  return commands.empty() ? nullptr : commands.front();
}

std::string fullNameOf(const CLI::App& app) {
  const CLI::App* parent = app.get_parent();
  return parent == nullptr ? app.get_name() : fullNameOf(*parent) + " " + app.get_name();
}

std::string paragraphs(const std::string& text, const HelpLayout& layout) {
  std::string result;
  for (const std::string_view line : split(text, "\n")) {
    if (line.empty()) {
      result += "\n";
    } else if (line.starts_with(' ')) {
      const bool isDeep = leadingBlanks(line) > entryIndent;
      result += wrapped(line, leadingBlanks(line) + (isDeep ? 0 : hangingIndent), layout.width);
    } else {
      result += layout.paint.in(Ink::Heading, line) + "\n";
    }
  }
  return result;
}

std::string helpText(const CLI::App& app, const HelpLayout& layout) {
  std::string text = wrapped(app.get_description(), 0, layout.width);
  text += heading("Usage", layout);
  text += wrapped("  " + usageOf(app), entryIndent + hangingIndent, layout.width);
  text += grouped<CLI::App>(
      shownCommands(app),
      [](const CLI::App& command) { return command.get_name() + argumentsOf(command); }, layout);
  std::vector<const CLI::Option*> entries = shownArguments(app);
  const auto options = shownOptions(app);
  entries.insert(entries.end(), options.begin(), options.end());
  text += grouped<CLI::Option>(entries, entryOf, layout);
  if (!app.get_footer().empty()) {
    text += "\n" + paragraphs(app.get_footer(), layout);
  }
  return text;
}

}  // namespace zelvreg::console
