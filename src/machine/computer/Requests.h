// What calls were asked for where nothing in the computer shows it afterwards. It is for tests to
// look at; no call reads it.
#ifndef ZELVREG_MACHINE_COMPUTER_REQUESTS_H
#define ZELVREG_MACHINE_COMPUTER_REQUESTS_H

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zelvreg::machine {

// A call that opens a key or makes it. Texts are UTF-8.
struct KeyRequest {
  std::string path;       // below the handle that was given
  std::string className;  // empty for none
  DWORD options = 0;
  // The record that tells how the new key is secured, if one was given.
  bool hasAttributes = false;
  DWORD attributesLength = 0;
  bool hasDescriptor = false;
  bool inheritsHandle = false;
};

// A document, an address or a program that the shell was to open. Texts are UTF-8.
struct OpenRequest {
  HWND owner = nullptr;
  std::optional<std::string> verb;  // none for the usual one
  std::string file;
  std::optional<std::string> parameters;
  std::optional<std::string> folder;
  int showStyle = 0;
};

// A message to the window of the suite, with the block of memory that it read then.
struct SuiteMessage {
  UINT number = 0;
  std::string text;               // as many bytes of the block as wParam says
  std::size_t flushed = 0;        // bytes of the block that had been flushed
  std::optional<HWND> parameter;  // what lParam pointed to; none for a null pointer
};

// An event that was reported to the event log. Texts are UTF-8.
struct EventReport {
  WORD type = 0;
  DWORD number = 0;
  bool hasUser = false;
  std::vector<std::string> texts;
};

struct Requests {
  KeyRequest newestKey;  // of the last call that made or opened one by RegCreateKeyExW
  std::vector<OpenRequest> opened;
  std::vector<SuiteMessage> suiteMessages;
  std::string eventSource;  // whose events they are, by the last call
  std::vector<EventReport> events;
};

}  // namespace zelvreg::machine

#endif
