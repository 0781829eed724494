// The window of the program for translators, as plain state, and what its controls do.
#ifndef ZELVREG_TRANSLATION_TRANSLATOR_H
#define ZELVREG_TRANSLATION_TRANSLATOR_H

#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "form/Form42.h"
#include "translation/Translation.h"

namespace zelvreg {

struct TranslatorForm {
  explicit TranslatorForm(MessageQueue& queue);

  FormWindow window{14400, 9600};
  DropShadow shadow;
  Label title;
  Button close;
  Label languageWord;
  ComboBox language{ComboStyle::DropDownList};
  Label charsetWord;
  ComboBox charset{ComboStyle::DropDownList};
  Label nameWord;
  TextBox name;
  Button open;
  Button create;
  Label fileInfo;
  CheckBox onlyWork;
  Label count;
  ImageList icons;
  ListView list;
  Label englishWord;
  Label englishText;
  Label translationWord;
  TextBox translation;
  Label remark;
  Button next;
  CheckBox utf8;
  Button save;
  Button saveAs;
  bool isOpen = false;
};

// The columns of its list, counted from 0.
inline constexpr std::size_t keyColumn = 0;
inline constexpr std::size_t englishColumn = 1;
inline constexpr std::size_t translationColumn = 2;
inline constexpr std::size_t remarkColumn = 3;

// The character sets that it offers: those of the languages that Windows has. The first is that of
// Western Europe.
inline constexpr std::array translatorCharsets{0,   238, 186, 204, 161, 162, 163,
                                               177, 178, 222, 128, 129, 134, 136};

class Translator {
 public:
  // The form gives language, font, messages and the program's folder; it must outlive this.
  explicit Translator(Form42& programForm);
  ~Translator() = default;
  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;

  // Opens a file; one that cannot be read is told, and nothing changes. Unsaved changes are asked
  // for first.
  void open(const std::string& wanted);
  void begin();
  void save();
  void saveAs();
  void next();
  void select(std::size_t row);
  // Ends it, unless the user wants to keep unsaved changes.
  void close();

  // What it says under a key of translatorTexts, in the language in use.
  [[nodiscard]] std::string told(std::string_view key,
                                 std::initializer_list<std::string_view> values = {}) const;
  // "unsure" for a row without a text, "likely" for one with another problem, else nothing: the
  // marks that the findings have.
  [[nodiscard]] std::string markOf(std::size_t row) const;

  // Asks for the name of a file to open, or to save under; the empty text for none.
  std::function<std::string(bool isToSave, const std::string& suggested)> askForFile;

  TranslatorForm form;
  [[nodiscard]] const Translation& translation() const { return current; }

 private:
  void giveFont();
  void giveTexts();
  void bindControls();
  void fillLanguages();
  void fillCharsets();
  bool mayDiscard();
  void showFile();
  void showRow(std::size_t row);
  void showSelected();
  void showCount();
  void filter();
  void chooseLanguage();
  void chooseCharset();
  void typed();
  bool write(const std::string& wanted);
  void addToList();
  [[nodiscard]] std::string remarkOf(std::size_t entry) const;
  [[nodiscard]] std::string suggestedName() const;

  Form42& program;
  LanguageFile ownTexts;
  LanguageFile english;
  Translation current;
  std::string path;
  std::vector<LanguageFields> languages;
  bool isShowing = false;  // then we ourselves change what the controls hold
};

}  // namespace zelvreg

#endif
