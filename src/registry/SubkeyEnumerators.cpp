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

using AtStop = SubkeyEnumerator::AtStop;

constexpr SubkeyEnumerator enumKey{.access = workOn64BitView,
                                   .list = &Form42::List1,
                                   .clearsFirst = false,
                                   .servesQueue = true,
                                   .repaintsTitle = true,
                                   .endsAfterFirst = false,
                                   .atStop = AtStop::LeavesNamesOpen};
constexpr SubkeyEnumerator enumKey1{.access = workOn64BitView,
                                    .list = &Form42::List4,
                                    .clearsFirst = true,
                                    .servesQueue = false,
                                    .repaintsTitle = true,
                                    .endsAfterFirst = false,
                                    .atStop = AtStop::ClosesNames};

void showName(Form42& form, std::string_view name, bool repaintsTitle) {
  form.Label3.caption = std::string(name);
  form.Label3.refresh();
  if (repaintsTitle) {
    form.Label1.refresh();
  }
}

// True when the walk came to its end, false when the user stopped it.
bool collectNames(Form42& form, const SubkeyEnumerator& kind, const OpenKey& key,
                  std::string& names) {
  ListBox& list = form.*kind.list;
  for (DWORD index = 0;; ++index) {
    if (kind.servesQueue) {
      form.messages.doEvents();
    }
    if (isStopAsked(form)) {
      return false;
    }
    std::array<char16_t, 2048> buffer;
    if (key.subkeyName(index, buffer) != ERROR_SUCCESS) {
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

Enumeration enumerated(Form42& form, const SubkeyEnumerator& kind, HiveHandle root,
                       const std::string& key) {
  Enumeration result;
  enumerateSubkeys(form, kind, root, key, result.names, result.rc);
  return result;
}

}  // namespace

void enumerateSubkeys(Form42& form, const SubkeyEnumerator& kind, HiveHandle root,
                      const std::string& key, std::string& names, LONG& rc) {
  if (kind.clearsFirst) {
    (form.*kind.list).clear();
  }
  if (root == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  OpenKey open(root, key, kind.access);
  if (!open.isOpen()) {
    rc = open.openStatus();
    return;
  }
  const bool isComplete = collectNames(form, kind, open, names);
  if (isComplete || kind.atStop == AtStop::ClosesNames) {
    closeNameList(names);
  } else if (kind.atStop == AtStop::LeavesAllOpen) {
    open.abandon();
    return;
  }
  rc = open.close();
}

bool isStopAsked(const Form42& form) { return leadingNumber(form.Text2.text()) == 2; }

void closeNameList(std::string& names) {
  names.push_back('\0');
  if (names.size() == 1) {
    names.push_back('\0');
  }
}

Enumeration fEnumKey(Form42& form, HiveHandle root, const std::string& key) {
  return enumerated(form, enumKey, root, key);
}

Enumeration fEnumKey1(Form42& form, HiveHandle root, const std::string& key) {
  return enumerated(form, enumKey1, root, key);
}

}  // namespace zelvreg
