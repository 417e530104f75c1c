#include "vector_outputs/point_types.h"

#include "text_utils/text.h"

namespace {

struct Token {
    std::string_view text;
    bool PointTypes::*flag;
};
constexpr Token TOKENS[] = {
    {"UV", &PointTypes::sides},    {"C", &PointTypes::centres}, {"H", &PointTypes::corners},
    {"T", &PointTypes::triangles}, {"ALL", &PointTypes::all},
};

const Token* tokenAt(std::string_view text) {
    for (const Token& token : TOKENS)
        if (text.starts_with(token.text)) return &token;
    return nullptr;
}

}  // namespace

PointTypes READ_POINT_TYPES(std::string_view text) {
    const std::string upper = UPPERCASE(text);
    PointTypes types;
    types.all = false;
    for (std::size_t at = 0; at < upper.size();) {
        if (const Token* token = tokenAt(std::string_view(upper).substr(at)); token != nullptr) {
            types.*token->flag = true;
            at += token->text.size();
        } else {
            if (upper[at] != ' ' && upper[at] != ',') types.unknown += text[at];
            ++at;
        }
    }
    if (!types.corners && !types.sides && !types.centres && !types.triangles) types.all = true;
    return types;
}

bool PASSES(const PointTypes& types, NodeKind kind) {
    if (kind[0] == ' ') return false;
    if (types.all) return true;
    switch (kind[0]) {
        case 'U': return types.sides;
        case 'C': return types.centres;
        case 'H': return types.corners;
        case 'T': return types.triangles;
        default: return false;
    }
}
