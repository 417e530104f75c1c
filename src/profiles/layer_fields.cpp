#include "profiles/layer_fields.h"

#include "gis/attributes.h"
#include "gis/data_line.h"
#include "text_utils/text.h"

#include <algorithm>
#include <optional>

namespace {

bool isOneOf(const GisAttribute& attribute, std::initializer_list<std::string_view> words) {
    const std::optional<ColumnType> type = COLUMN_TYPE(attribute.type);
    return type && std::find(words.begin(), words.end(), type->word) != words.end();
}

}  // namespace

std::vector<std::string> RECORD_VALUES(std::string_view line) {
    std::vector<std::string> values;
    DataLine data(line);
    for (DataValue value; data.NEXT(value);) values.emplace_back(TRIMMED(value.text));
    return values;
}

bool IS_NUMBER_FIELD(const GisAttribute& attribute) {
    return isOneOf(attribute, {"INTEGER", "SMALLINT", "LARGEINT", "FLOAT", "DECIMAL"});
}

std::size_t LABEL_FIELD(const std::vector<GisAttribute>& attributes) {
    const auto text = std::find_if(attributes.begin(), attributes.end(),
                                   [](const GisAttribute& attribute) { return isOneOf(attribute, {"CHAR"}); });
    return text == attributes.end() ? 0 : static_cast<std::size_t>(text - attributes.begin());
}
