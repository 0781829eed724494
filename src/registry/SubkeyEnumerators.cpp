#include "registry/SubkeyEnumerators.h"

#include <array>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "registry/Hives.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

enum class AtStop { LeaveNamesOpen, LeaveAllOpen, CloseNames };

struct Enumerator {
  REGSAM access;
  ListBox Form42::*list;
  bool clearsFirst;
  bool servesQueue;
  bool repaintsTitle;
  bool endsAfterFirst;
  AtStop atStop;
};

constexpr Enumerator enumKey{workOn64BitView, &Form42::List1,        false, true, true,
                             false,           AtStop::LeaveNamesOpen};
constexpr Enumerator enumKeyno{workOn32BitView, &Form42::List1,      false, true, true,
                               false,           AtStop::LeaveAllOpen};
constexpr Enumerator enumKey1{workOn64BitView, &Form42::List4,    true, false, true,
                              false,           AtStop::CloseNames};
constexpr Enumerator enumKey5{workOn64BitView,   &Form42::List5, true, false, false, true,
                              AtStop::CloseNames};
constexpr Enumerator enumKey6{workOn64BitView,   &Form42::List6, true, false, false, true,
                              AtStop::CloseNames};

void showName(Form42& form, std::string_view name, bool repaintsTitle) {
  form.Label3.caption = std::string(name);
  form.Label3.refresh();
  if (repaintsTitle) {
    form.Label1.refresh();
  }
}

// True when the walk came to its end, false when the user stopped it.
bool collectNames(Form42& form, const Enumerator& kind, HKEY key, std::string& names) {
  ListBox& list = form.*kind.list;
  for (DWORD index = 0;; ++index) {
    if (kind.servesQueue) {
      form.messages.doEvents();
    }
    if (isStopAsked(form)) {
      return false;
    }
    std::array<char16_t, 2048> buffer;
    if (RegEnumKeyW(key, index, roomIn(buffer), static_cast<DWORD>(buffer.size())) !=
        ERROR_SUCCESS) {
      return true;
    }
    // The name ends in its NUL, so only blanks before it are trimmed away.
    const std::string whole = utf8(buffer.data());
    std::string_view name(whole);
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    names.append(name).push_back('\0');
    showName(form, name, kind.repaintsTitle);
    list.add(name);
    if (kind.endsAfterFirst) {
      return true;
    }
  }
}

void enumerate(Form42& form, const Enumerator& kind, const std::string& hive,
               const std::string& key, std::string& names, LONG& rc) {
  if (kind.clearsFirst) {
    (form.*kind.list).clear();
  }
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  OpenKey open(handle, key, kind.access);
  if (!open.isOpen()) {
    rc = open.openStatus();
    return;
  }
  const bool isComplete = collectNames(form, kind, open.handle(), names);
  if (isComplete || kind.atStop == AtStop::CloseNames) {
    closeNameList(names);
  } else if (kind.atStop == AtStop::LeaveAllOpen) {
    open.abandon();
    return;
  }
  rc = open.close();
}

}  // namespace

bool isStopAsked(const Form42& form) { return leadingNumber(form.Text2.text()) == 2; }

void closeNameList(std::string& names) {
  names.push_back('\0');
  if (names.size() == 1) {
    names.push_back('\0');
  }
}

void fEnumKey(Form42& form, const std::string& hive, const std::string& key, std::string& names,
              LONG& rc) {
  enumerate(form, enumKey, hive, key, names, rc);
}

void fEnumKeyno(Form42& form, const std::string& hive, const std::string& key, std::string& names,
                LONG& rc) {
  enumerate(form, enumKeyno, hive, key, names, rc);
}

void fEnumKey1(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc) {
  enumerate(form, enumKey1, hive, key, names, rc);
}

void fEnumKey5(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc) {
  enumerate(form, enumKey5, hive, key, names, rc);
}

void fEnumKey6(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc) {
  enumerate(form, enumKey6, hive, key, names, rc);
}

}  // namespace zelvreg
