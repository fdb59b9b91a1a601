#include "parse_grammar.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace camtune {
namespace cli {
namespace parse {
namespace {

// Elements tried for one name and grammar before the search gives up. Names are short, so only
// a grammar with many free texts comes near it.
constexpr long kStepBudget = 2000000;
// Longest digit run read as one number; more would overflow 64 bits.
constexpr size_t kMaxDigits = 18;
constexpr char kFolderSeparator = '/';

class Matcher {
public:
    Matcher(const std::string& name, const Check& check) : mName(name), mCheck(check) {}

    MatchResult run(const Sequence& grammar) {
        MatchResult result;
        result.matched = matchFrom(grammar, 0, 0, [&](size_t at) {
            if (at != mName.size()) return false;
            Fields fields = Fields::object();
            for (const auto& [name, value] : mFields) fields[name] = value;
            if (mCheck) {
                std::string refusal = mCheck(fields);
                if (!refusal.empty()) {
                    result.refusal = std::move(refusal);
                    return false;
                }
            }
            result.fields = std::move(fields);
            return true;
        });
        result.furthest = mFurthest;
        if (result.matched) result.refusal.clear();
        result.gaveUp = !result.matched && mSteps > kStepBudget;
        return result;
    }

private:
    using Next = std::function<bool(size_t)>;

    bool matchFrom(const Sequence& sequence, size_t index, size_t at, const Next& next) {
        if (index == sequence.size()) return next(at);
        return matchElement(sequence[index], at,
                            [&](size_t end) { return matchFrom(sequence, index + 1, end, next); });
    }

    // A field printed twice comes from one value, so both must read the same.
    bool agrees(const std::pair<std::string, Fields>& field) const {
        for (const auto& known : mFields) {
            if (known.first == field.first && known.second != field.second) return false;
        }
        return true;
    }

    // Records `fields`, tries the rest of the grammar from `end`, and forgets them on failure.
    bool advance(size_t end, const std::vector<std::pair<std::string, Fields>>& fields,
                 const Next& next) {
        for (const auto& field : fields) {
            if (!agrees(field)) return false;
        }
        if (end > mFurthest) mFurthest = end;
        for (const auto& field : fields) mFields.push_back(field);
        if (next(end)) return true;
        mFields.resize(mFields.size() - fields.size());
        return false;
    }

    bool matchElement(const Element& element, size_t at, const Next& next) {
        if (++mSteps > kStepBudget) return false;
        switch (element.type) {
            case Element::Type::Literal:
                if (mName.compare(at, element.text.size(), element.text) != 0) return false;
                return advance(at + element.text.size(), {}, next);
            case Element::Type::Number:
                return matchNumber(element, at, next);
            case Element::Type::Choice:
                for (const Option& option : element.options) {
                    if (mName.compare(at, option.text.size(), option.text) != 0) continue;
                    if (advance(at + option.text.size(), option.fields, next)) return true;
                }
                return false;
            case Element::Type::Text:
                return matchText(element, at, next);
            case Element::Type::Alternatives:
                for (const Sequence& alternative : element.alternatives) {
                    if (matchFrom(alternative, 0, at, next)) return true;
                }
                return false;
        }
        return false;
    }

    bool matchNumber(const Element& element, size_t at, const Next& next) {
        size_t digits = at;
        if (digits < mName.size() && mName[digits] == '-') ++digits;
        size_t end = digits;
        while (end < mName.size() && end - digits < kMaxDigits &&
               std::isdigit(static_cast<unsigned char>(mName[end]))) {
            ++end;
        }
        // Longest first: a number is usually followed by a separator, not by more digits.
        for (; end > digits; --end) {
            const std::string printed = mName.substr(at, end - at);
            const long long value = std::strtoll(printed.c_str(), nullptr, 10);
            if (value < element.min || value > element.max) continue;
            char again[32];
            std::snprintf(again, sizeof(again), element.format.c_str(), static_cast<int>(value));
            if (printed != again) continue;
            std::vector<std::pair<std::string, Fields>> fields;
            if (!element.field.empty()) fields.emplace_back(element.field, value);
            if (advance(end, fields, next)) return true;
        }
        return false;
    }

    bool matchText(const Element& element, size_t at, const Next& next) {
        size_t limit = mName.find(kFolderSeparator, at);
        if (limit == std::string::npos) limit = mName.size();
        for (size_t end = element.allowEmpty ? at : at + 1; end <= limit; ++end) {
            std::vector<std::pair<std::string, Fields>> fields;
            if (!element.field.empty()) {
                fields.emplace_back(element.field, mName.substr(at, end - at));
            }
            if (advance(end, fields, next)) return true;
            if (mSteps > kStepBudget) return false;
        }
        return false;
    }

    const std::string& mName;
    const Check& mCheck;
    std::vector<std::pair<std::string, Fields>> mFields;
    size_t mFurthest = 0;
    long mSteps = 0;
};

}  // namespace

Element literal(std::string text) {
    Element element;
    element.type = Element::Type::Literal;
    element.text = std::move(text);
    return element;
}

Element number(std::string field, std::string format, int64_t min, int64_t max) {
    Element element;
    element.type = Element::Type::Number;
    element.field = std::move(field);
    element.format = std::move(format);
    element.min = min < INT32_MIN ? INT32_MIN : min;
    element.max = max > INT32_MAX ? INT32_MAX : max;
    return element;
}

Element choice(std::vector<Option> options) {
    Element element;
    element.type = Element::Type::Choice;
    element.options = std::move(options);
    return element;
}

Element text(std::string field, bool allowEmpty) {
    Element element;
    element.type = Element::Type::Text;
    element.field = std::move(field);
    element.allowEmpty = allowEmpty;
    return element;
}

Element oneOf(std::vector<Sequence> alternatives) {
    Element element;
    element.type = Element::Type::Alternatives;
    element.alternatives = std::move(alternatives);
    return element;
}

Element optional(Sequence sequence) {
    return oneOf({std::move(sequence), {}});
}

MatchResult matchName(const std::string& name, const Sequence& grammar, const Check& check) {
    return Matcher(name, check).run(grammar);
}

}  // namespace parse
}  // namespace cli
}  // namespace camtune
