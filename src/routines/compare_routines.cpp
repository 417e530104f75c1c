// Comparing texts, for the C interface. Each routine calls its namesake of text_utils.
#include "routines/texts.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include "vorant_routines.h"

using Length = const std::int32_t*;

std::int32_t ASAME(const char* a, Length aLength, const char* b, Length bLength) {
    return guardedTruth([&] { return ASAME(textAt(a, aLength), textAt(b, bLength)); });
}
std::int32_t ASAMECS(const char* a, Length aLength, const char* b, Length bLength) {
    return guardedTruth([&] { return ASAMECS(textAt(a, aLength), textAt(b, bLength)); });
}
std::int32_t FLAGEXISTS(const char* a, Length aLength, const char* b, Length bLength) {
    return guardedTruth([&] { return FLAGEXISTS(textAt(a, aLength), textAt(b, bLength)); });
}
std::int32_t FLAGEXISTSRET(const char* a, Length aLength, const char* b, Length bLength, char* rest,
                           Length restLength) {
    std::string behind;
    const std::int32_t found =
        guardedTruth([&] { return FLAGEXISTSRET(textAt(a, aLength), textAt(b, bLength), behind); });
    fill(rest, restLength, behind, TooLong::Cut);
    return found;
}

std::int32_t COMMENTLINE(char* line, Length length) {
    return guardedTruth([&] {
        std::string text(textAt(line, length));
        const bool comment = COMMENTLINE(text);
        fill(line, length, text, TooLong::Cut);
        return comment;
    });
}

std::int32_t POSITIVEINTEGERNUMBER(const char* text, Length length) {
    return truth(POSITIVEINTEGERNUMBER(textAt(text, length)));
}
std::int32_t BLANK(const char* text, Length length) { return truth(TRIMF(textAt(text, length)).empty()); }
