#include "gdal_outputs/module/driver_options.h"

#include "gdal_outputs/module/failures.h"

#include <cpl_minixml.h>
#include <gdal.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace {

struct DestroyXml {
    void operator()(CPLXMLNode* node) const { CPLDestroyXMLNode(node); }
};
using Xml = std::unique_ptr<CPLXMLNode, DestroyXml>;

/// One option as the driver describes it. The lists are XML: <Option name='..' type='..'><Value>..</Value>..</Option>.
struct Described {
    std::string name, type, min, max;
    std::vector<std::string> values;
};

void addDescribed(std::vector<Described>& all, const char* list) {
    if (list == nullptr) return;
    const Xml xml(CPLParseXMLString(list));
    const CPLXMLNode* root = xml ? CPLGetXMLNode(xml.get(), "=") : nullptr;
    if (root == nullptr) root = xml.get();
    for (const CPLXMLNode* node = root != nullptr ? root->psChild : nullptr; node != nullptr; node = node->psNext) {
        if (node->eType != CXT_Element || std::string_view(node->pszValue) != "Option") continue;
        Described option{CPLGetXMLValue(node, "name", ""),
                         CPLGetXMLValue(node, "type", ""),
                         CPLGetXMLValue(node, "min", ""),
                         CPLGetXMLValue(node, "max", ""),
                         {}};
        for (const CPLXMLNode* value = node->psChild; value != nullptr; value = value->psNext) {
            if (value->eType != CXT_Element || std::string_view(value->pszValue) != "Value") continue;
            option.values.emplace_back(CPLGetXMLValue(value, nullptr, ""));
            const std::string alias = CPLGetXMLValue(value, "alias", "");
            if (!alias.empty()) option.values.push_back(alias);
        }
        all.push_back(std::move(option));
    }
}

enum class OptionsOf : std::uint8_t { Files, Layers, Both };

std::vector<Described> described(const char* driver, OptionsOf of) {
    std::vector<Described> all;
    GDALMajorObjectH object = DRIVER(driver);
    if (of != OptionsOf::Layers) addDescribed(all, GDALGetMetadataItem(object, GDAL_DMD_CREATIONOPTIONLIST, nullptr));
    if (of != OptionsOf::Files)
        addDescribed(all, GDALGetMetadataItem(object, GDAL_DS_LAYER_CREATIONOPTIONLIST, nullptr));
    return all;
}

std::string nameOf(const char* option) {
    const std::string_view text(option);
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string_view::npos)
        throw GdalFailure{"\"" + std::string(text) + "\" is not of the form KEY=VALUE"};
    return std::string(text.substr(0, equals));
}

const Described* find(const std::vector<Described>& all, const std::string& name) {
    for (const Described& option : all)
        if (EQUAL(option.name.c_str(), name.c_str())) return &option;
    return nullptr;
}

template <typename Items, typename TextOf>
std::string listed(const Items& items, TextOf textOf) {
    std::string list;
    for (const auto& item : items) list += (list.empty() ? "" : ", ") + textOf(item);
    return list;
}

bool isNumberWithin(const Described& option, const std::string& value) {
    if (CPLGetValueType(value.c_str()) == CPL_VALUE_STRING) return false;
    if (option.type != "float" && CPLGetValueType(value.c_str()) != CPL_VALUE_INTEGER) return false;
    const double number = CPLAtof(value.c_str());
    return (option.min.empty() || number >= CPLAtof(option.min.c_str())) &&
           (option.max.empty() || number <= CPLAtof(option.max.c_str()));
}

bool isTruth(const std::string& value) {
    for (const char* word : {"YES", "NO", "TRUE", "FALSE", "ON", "OFF", "1", "0"})
        if (EQUAL(value.c_str(), word)) return true;
    return false;
}

void checkValue(const Described& option, const std::string& value) {
    const std::string what = "\"" + value + "\" is no value of " + option.name;
    if (!option.values.empty()) {
        for (const std::string& valid : option.values)
            if (EQUAL(valid.c_str(), value.c_str())) return;
        throw GdalFailure{what + "; the valid ones are " + listed(option.values, [](const auto& v) { return v; })};
    }
    const bool number = option.type == "int" || option.type == "integer" || option.type == "float";
    if (number && !isNumberWithin(option, value)) throw GdalFailure{what};
    if (option.type == "boolean" && !isTruth(value)) throw GdalFailure{what + "; the valid ones are YES, NO"};
}

}  // namespace

void* DRIVER(const char* name) {
    void* driver = GDALGetDriverByName(name);
    if (driver == nullptr) throw GdalFailure{"this GDAL has no driver " + std::string(name)};
    return driver;
}

CPLStringList OPTIONS_OVER(CPLStringList defaults, GdalTexts options) {
    for (std::int32_t i = 0; i < options.count; ++i) {
        const std::string name = nameOf(options.texts[i]);
        defaults.SetNameValue(name.c_str(), options.texts[i] + name.size() + 1);
    }
    return defaults;
}

CPLStringList OPTIONS_FOR(const char* driver, GdalTexts options, bool layers) {
    const std::vector<Described> valid = described(driver, layers ? OptionsOf::Layers : OptionsOf::Files);
    CPLStringList chosen;
    for (std::int32_t i = 0; i < options.count; ++i)
        if (find(valid, nameOf(options.texts[i])) != nullptr) chosen.AddString(options.texts[i]);
    return chosen;
}

void CHECK_DRIVER_OPTIONS(const char* driver, GdalTexts options) {
    const std::vector<Described> valid = described(driver, OptionsOf::Both);
    for (std::int32_t i = 0; i < options.count; ++i) {
        const std::string name = nameOf(options.texts[i]);
        const Described* option = find(valid, name);
        if (option == nullptr)
            throw GdalFailure{std::string(driver) + " has no option " + name + "; the valid ones are " +
                              listed(valid, [](const Described& o) { return o.name; })};
        checkValue(*option, options.texts[i] + name.size() + 1);
    }
}
