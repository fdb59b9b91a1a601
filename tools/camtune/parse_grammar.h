// Name grammars for camtune parse. A grammar is a sequence of elements (fixed text, a printed
// number, one of a few texts, free text, alternatives); a name is matched against the whole of
// it with backtracking, and the elements that carry a field name record what they matched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace camtune {
namespace cli {
namespace parse {

// Decoded fields, in the order the name holds them.
using Fields = nlohmann::ordered_json;

struct Element;
using Sequence = std::vector<Element>;

// One way a choice element can match: its text and the fields it records.
struct Option {
    std::string text;
    std::vector<std::pair<std::string, Fields>> fields;
};

struct Element {
    enum class Type { Literal, Number, Choice, Text, Alternatives };
    Type type = Type::Literal;
    std::string text;         // Literal
    std::string field;        // Number, Text: field to record; empty records nothing
    std::string format;       // Number: the printf conversion that wrote it ("%d", "%09d")
    int64_t min = INT32_MIN;  // Number: accepted range
    int64_t max = INT32_MAX;
    std::vector<Option> options;         // Choice, tried in order
    bool allowEmpty = false;             // Text
    std::vector<Sequence> alternatives;  // Alternatives, tried in order
};

Element literal(std::string text);
// A number printed with `format`; only the exact text that format prints for the value matches,
// so "%04d" takes "0012" but not "12", and "%d" takes "-3" but not "-03".
Element number(std::string field, std::string format = "%d", int64_t min = INT32_MIN,
               int64_t max = INT32_MAX);
Element choice(std::vector<Option> options);
// Any text without '/'; the shortest that lets the rest of the grammar match wins.
Element text(std::string field, bool allowEmpty);
Element oneOf(std::vector<Sequence> alternatives);
// `sequence` or nothing, in that order of preference.
Element optional(Sequence sequence);

struct MatchResult {
    bool matched = false;
    Fields fields = Fields::object();
    // Characters of the name matched by the longest partial match: how far the name fits.
    size_t furthest = 0;
    // The search gave up before trying every way to match (a grammar with many free texts).
    bool gaveUp = false;
    // Why the check refused the last complete match, when it did.
    std::string refusal;
};

// Looks at the fields of a complete match: an empty result accepts them, otherwise it says why
// the name cannot be one of the grammar's after all.
using Check = std::function<std::string(const Fields&)>;

// Matches the whole of `name`. `check`, when given, sees the fields of each complete match and
// can refuse it, and the search goes on for another way to match.
MatchResult matchName(const std::string& name, const Sequence& grammar,
                      const Check& check = nullptr);

}  // namespace parse
}  // namespace cli
}  // namespace camtune
