#include <windows.h>
// Needs the types of <windows.h>.
#include <bcrypt.h>

#include <stdexcept>

#include "libraries/SystemLibrary.h"
#include "runtime/Sha256.h"

namespace zelvreg {
namespace {

void check(NTSTATUS status) {
  if (status < 0) {
    throw std::runtime_error("Windows cannot compute a SHA-256; repair its cryptographic service");
  }
}

template <class Function>
Function* callOf(const char* name) {
  auto* const found = systemFunction<Function>(L"bcrypt.dll", name);
  check(found == nullptr ? -1 : 0);
  return found;
}

// The calls of the system's library.
struct Calls {
  decltype(BCryptOpenAlgorithmProvider)* open =
      callOf<decltype(BCryptOpenAlgorithmProvider)>("BCryptOpenAlgorithmProvider");
  decltype(BCryptCloseAlgorithmProvider)* close =
      callOf<decltype(BCryptCloseAlgorithmProvider)>("BCryptCloseAlgorithmProvider");
  decltype(BCryptCreateHash)* create = callOf<decltype(BCryptCreateHash)>("BCryptCreateHash");
  decltype(BCryptHashData)* add = callOf<decltype(BCryptHashData)>("BCryptHashData");
  decltype(BCryptFinishHash)* finish = callOf<decltype(BCryptFinishHash)>("BCryptFinishHash");
  decltype(BCryptDestroyHash)* destroy = callOf<decltype(BCryptDestroyHash)>("BCryptDestroyHash");
};

const Calls& calls() {
  static const Calls found;
  return found;
}

// What the calls need for one digest; closed with it.
class Provider {
 public:
  Provider() { check(calls().open(&handle, BCRYPT_SHA256_ALGORITHM, nullptr, 0)); }
  ~Provider() { calls().close(handle, 0); }
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  [[nodiscard]] BCRYPT_ALG_HANDLE get() const { return handle; }

 private:
  BCRYPT_ALG_HANDLE handle = nullptr;
};

}  // namespace

// BCryptHash would do it in one call, but Windows 7 does not have it.
Digest sha256(std::string_view bytes) {
  const Provider provider;
  BCRYPT_HASH_HANDLE hash = nullptr;
  check(calls().create(provider.get(), &hash, nullptr, 0, nullptr, 0, 0));
  Digest digest{};
  // The calls take bytes that may be written, and do not write them.
  NTSTATUS status = calls().add(hash, reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data())),
                                static_cast<ULONG>(bytes.size()), 0);
  if (status >= 0) {
    status = calls().finish(hash, digest.data(), static_cast<ULONG>(digest.size()), 0);
  }
  calls().destroy(hash);
  check(status);
  return digest;
}

}  // namespace zelvreg
