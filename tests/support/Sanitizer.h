// Whether the tests run under AddressSanitizer, which keeps terabytes of addresses, traces
// processes itself, and makes everything several times as long.
#ifndef ZELVREG_TESTS_SUPPORT_SANITIZER_H
#define ZELVREG_TESTS_SUPPORT_SANITIZER_H

namespace zelvreg::fixture {

// GCC says so by a macro, Clang by a feature.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool areAddressesChecked = true;
#elif defined(__has_feature)
inline constexpr bool areAddressesChecked = __has_feature(address_sanitizer);
#else
inline constexpr bool areAddressesChecked = false;
#endif

}  // namespace zelvreg::fixture

#endif
