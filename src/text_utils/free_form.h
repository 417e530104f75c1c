// Free-form reading of values from a line: blanks, tabs or commas between them, "1.", ".5", "1d3", "+2", 1.0E-003.
// Inline and without allocation, since meshes of millions of lines are read through it.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

/// Walks a line from its start. Each NEXT routine takes one value; what it returns says whether there was one.
class FreeForm {
public:
    /// End: the line ran out; Bad: a value that does not parse, or is out of range
    enum class Read : std::uint8_t { Value, Bad, End };

    explicit FreeForm(std::string_view line) : at_(line.data()), end_(line.data() + line.size()) {}

    Read NEXT_REAL(double& value) { return nextReal(value); }
    Read NEXT_REAL(float& value) { return nextReal(value); }  ///< rounded once, from the text to 32 bits

    /// A whole number; "3.0" is Bad.
    template <typename Integer>
    Read NEXT_INTEGER(Integer& value) {
        skipSeparators();
        if (at_ == end_) return Read::End;
        if (nextShortInteger(value)) return Read::Value;
        const char* first = at_ + (*at_ == '+' && end_ - at_ > 1 && at_[1] != '-' ? 1 : 0);
        const auto [stop, error] = std::from_chars(first, end_, value);
        if (error == std::errc{} && endsWord(stop)) {
            at_ = stop;
            return Read::Value;
        }
        nextWord();
        return Read::Bad;
    }

    /// A text: one word, or everything between a pair of double or single quotes. A quote that is not closed is Bad.
    Read NEXT_TEXT(std::string_view& text) {
        skipSeparators();
        if (at_ == end_) return Read::End;
        const char quote = *at_;
        if (quote != '"' && quote != '\'') {
            text = nextWord();
            return Read::Value;
        }
        const char* first = ++at_;
        while (at_ != end_ && *at_ != quote) ++at_;
        if (at_ == end_) return Read::Bad;
        text = {first, static_cast<std::size_t>(at_ - first)};
        ++at_;
        return Read::Value;
    }

    /// True when only separators are left.
    bool ENDED() {
        skipSeparators();
        return at_ == end_;
    }
    /// What is left of the line, from the next value on.
    std::string_view REST() {
        skipSeparators();
        return {at_, static_cast<std::size_t>(end_ - at_)};
    }

private:
    static bool separates(char c) { return c == ' ' || c == ',' || c == '\t' || c == '\r'; }
    bool endsWord(const char* at) const { return at == end_ || separates(*at); }
    void skipSeparators() {
        while (at_ != end_ && separates(*at_)) ++at_;
    }
    std::string_view nextWord() {
        skipSeparators();
        const char* first = at_;
        while (at_ != end_ && !separates(*at_)) ++at_;
        return {first, static_cast<std::size_t>(at_ - first)};
    }

    /// The usual case without the general routine's checks: up to nine digits cannot overflow.
    template <typename Integer>
    bool nextShortInteger(Integer& value) {
        if constexpr (sizeof(Integer) < sizeof(std::int32_t)) return false;
        constexpr std::ptrdiff_t SAFE_DIGITS = 9;
        const char* at = at_;
        const char* last = end_ - at > SAFE_DIGITS ? at + SAFE_DIGITS : end_;
        std::int32_t number = 0;
        for (; at != last && *at >= '0' && *at <= '9'; ++at) number = number * 10 + (*at - '0');
        if (at == at_ || !endsWord(at)) return false;
        value = static_cast<Integer>(number);
        at_ = at;
        return true;
    }

    template <std::size_t Count>
    static constexpr std::array<double, Count> powersOfTen() {
        std::array<double, Count> powers{1.0};
        for (std::size_t i = 1; i < Count; ++i) powers[i] = powers[i - 1] * 10.0;
        return powers;
    }

    /// The usual case, digits with a point among them: while both the digits and the power of ten are exact in the
    /// type, one division rounds as the general routine does (Clinger, How to read floating point numbers accurately,
    /// 1990).
    template <typename Real>
    bool nextShortDecimal(Real& value) {
        constexpr std::ptrdiff_t SAFE_DIGITS = sizeof(Real) == sizeof(float) ? 7 : 15;
        constexpr std::array<double, SAFE_DIGITS + 1> POWERS = powersOfTen<SAFE_DIGITS + 1>();
        const char* at = at_;
        const char* last = end_ - at > SAFE_DIGITS + 1 ? at + SAFE_DIGITS + 1 : end_;
        std::int64_t digits = 0;
        const char* point = nullptr;
        for (; at != last; ++at) {
            if (*at >= '0' && *at <= '9') digits = digits * 10 + (*at - '0');
            else if (*at == '.' && point == nullptr) point = at;
            else break;
        }
        const std::ptrdiff_t count = at - at_ - (point != nullptr ? 1 : 0);
        if (count == 0 || count > SAFE_DIGITS || !endsWord(at)) return false;
        value = static_cast<Real>(digits) /
                static_cast<Real>(POWERS[point != nullptr ? static_cast<std::size_t>(at - point - 1) : 0]);
        at_ = at;
        return true;
    }

    template <typename Real>
    Read nextReal(Real& value) {
        skipSeparators();
        if (at_ == end_) return Read::End;
        if (nextShortDecimal(value)) return Read::Value;
        const char* first = at_ + (*at_ == '+' && end_ - at_ > 1 && at_[1] != '-' && at_[1] != '+' ? 1 : 0);
        const auto [stop, error] = std::from_chars(first, end_, value);
        if (error == std::errc{} && endsWord(stop)) {
            at_ = stop;
            return Read::Value;
        }
        const std::string_view word = nextWord();
        return realWithLetterD(word.substr(static_cast<std::size_t>(first - word.data())), value);
    }

    /// Double-precision exponents written "1d3" or "1D+003", and values too small for the type, which become zero.
    template <typename Real>
    static Read realWithLetterD(std::string_view word, Real& value) {
        std::array<char, 64> copy{};
        if (word.size() > copy.size()) return Read::Bad;
        for (std::size_t i = 0; i < word.size(); ++i)
            copy[i] = word[i] == 'd' || word[i] == 'D' || word[i] == 'E' ? 'e' : word[i];
        const char* last = copy.data() + word.size();
        const auto [stop, error] = std::from_chars(copy.data(), last, value);
        if (stop != last) return Read::Bad;
        if (error == std::errc{}) return Read::Value;
        double wide = 0.0;
        const auto wideError = std::from_chars(copy.data(), last, wide).ec;
        const bool tooSmall = wideError == std::errc{}
                                  ? wide > -1.0 && wide < 1.0
                                  : std::string_view(copy.data(), word.size()).find("e-") != std::string_view::npos;
        if (!tooSmall) return Read::Bad;
        value = Real{0};
        return Read::Value;
    }

    const char* at_;
    const char* end_;
};
