// The codes, the effects and the texts of the reasons, and what follows from several of them.
#ifndef ZELVREG_EVIDENCE_REASONS_H
#define ZELVREG_EVIDENCE_REASONS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "form/Evidence.h"

namespace zelvreg {

struct Form42;

// What a reason does to the confidence.
enum class Effect : std::uint8_t {
  Gone,       // leaves it as it is
  Doubt,      // one makes it likely, two make it unsure, or with ParentAbsent likely
  Undecided,  // makes it unsure
};

struct ReasonRule {
  Reason reason;
  const char* code;  // in JSON, CSV and the language files
  Effect effect;
  const char* sentence;  // in English
};

// One for each reason, in the order of the enumeration.
std::span<const ReasonRule, reasonCount> reasonRules();
const ReasonRule& ruleOf(Reason reason);

// "sure", "likely" and "unsure".
const char* codeOf(Confidence confidence);
std::optional<Confidence> confidenceOfCode(std::string_view code);

// What follows from the reasons: the first effect that makes it unsure decides.
Confidence confidenceOf(std::span<const Reason> reasons);

// The codes of the reasons, separated by blanks.
std::string reasonCodes(const Evidence& evidence);

// "Sure", "Likely" or "Unsure", in the language in use.
std::string wordOf(const Form42& form, Confidence confidence);

// Why, in the language in use: the sentence of the reason that decided.
std::string sentenceOf(const Form42& form, const Evidence& evidence);

}  // namespace zelvreg

#endif
