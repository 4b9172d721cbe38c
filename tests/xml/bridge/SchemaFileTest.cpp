// The tables of the schema's elements against the schema itself, which is no part of the project:
// the environment variable KAVU_XSD names a folder that has it.
#include "vocabulary/SchemaElements.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pugixml.hpp>

namespace kavu {
namespace {

struct Found {
    bool repeats = false;
    bool isRequired = false;
    std::set<std::string> texts;  ///< of an enumeration
};
using Elements = std::map<std::string, Found>;

std::string attribute(pugi::xml_node node, const char* name) {
    return node.attribute(name).value();
}

/// All elements and attributes of a type, by their paths.
class SchemaWalk {
  public:
    explicit SchemaWalk(pugi::xml_node schema) {
        for (const auto child : schema.children()) {
            const auto name = attribute(child, "name");
            (std::string(child.name()) == "xs:element" ? elements_ : types_)[name] = child;
        }
    }

    /// The elements below an element of this name, wherever it is; `without` are left out.
    Elements below(const std::string& name, const std::set<std::string>& without = {}) {
        without_ = without;
        found_.clear();
        walk(typeOf(find(name)), "");
        return found_;
    }
    /// The same of the element of a named type.
    Elements belowIn(const std::string& type, const std::string& name,
                     const std::set<std::string>& without = {}) {
        without_ = without;
        found_.clear();
        walk(typeOf(findIn(types_[type], name)), "");
        return found_;
    }

  private:
    static pugi::xml_node findIn(pugi::xml_node from, const std::string& name) {
        return from.find_node([&name](pugi::xml_node node) {
            return std::string(node.name()) == "xs:element" && attribute(node, "name") == name;
        });
    }
    pugi::xml_node find(const std::string& name) {
        return elements_.contains(name) ? elements_[name] : findIn(elements_["Tmats"], name);
    }
    pugi::xml_node typeOf(pugi::xml_node element) {
        const auto named = types_.find(attribute(element, "type"));
        if (named != types_.end()) {
            return named->second;
        }
        const auto complex = element.child("xs:complexType");
        return complex ? complex : element.child("xs:simpleType");
    }
    void addTexts(pugi::xml_node type, Found& found) {
        for (const auto each : type.child("xs:restriction").children("xs:enumeration")) {
            found.texts.insert(attribute(each, "value"));
        }
    }
    void walk(pugi::xml_node type, const std::string& path) {
        for (const auto child : type.children()) {
            const std::string tag(child.name());
            const auto name = (path.empty() ? "" : path + "/") +
                              (tag == "xs:attribute" ? "@" : "") + attribute(child, "name");
            if (tag == "xs:attribute") {
                auto& found = found_[name];
                found.isRequired = attribute(child, "use") == "required";
                addTexts(typeOf(child), found);
            } else if (tag == "xs:element") {
                if (without_.contains(attribute(child, "name"))) {
                    continue;
                }
                auto& found = found_[name];
                const auto most = attribute(child, "maxOccurs");
                found.repeats = !most.empty() && most != "1";
                found.isRequired = attribute(child, "minOccurs") != "0";
                addTexts(typeOf(child), found);
                walk(typeOf(child), name);
            } else if (tag != "xs:annotation" && tag != "xs:restriction") {
                if (const auto base = types_.find(attribute(child, "base")); base != types_.end()) {
                    walk(base->second, path);
                }
                walk(child, path);
            }
        }
    }

    std::map<std::string, pugi::xml_node> types_;
    std::map<std::string, pugi::xml_node> elements_;
    std::set<std::string> without_;
    Elements found_;
};

std::set<std::string> textsOf(char letter, const SchemaElement& element) {
    std::set<std::string> texts;
    for (const auto& field : findVocabulary(letter)->fields) {
        for (const auto& choice : field.choices) {
            if (schemaElement(field) == element.path && !schemaText(choice).empty()) {
                texts.insert(std::string(schemaText(choice)));
            }
        }
    }
    return texts;
}

class SchemaFile : public testing::Test {
  protected:
    void SetUp() override {
        const char* const folder = std::getenv("KAVU_XSD");
        if (folder == nullptr) {
            GTEST_SKIP() << "KAVU_XSD names no folder";
        }
        const auto path = std::string(folder) + "/Tmats_01-2011.xsd";
        ASSERT_TRUE(schema_.load_file(path.c_str())) << path;
    }
    void compare(char letter, const Elements& expected) {
        std::set<std::string> seen;
        for (const auto& element : schemaElements(letter)) {
            const auto path = std::string(element.path);
            const auto found = expected.find(path);
            ASSERT_NE(found, expected.end()) << letter << " " << path;
            seen.insert(path);
            EXPECT_EQ(element.repeats, found->second.repeats) << letter << " " << path;
            EXPECT_EQ(element.isRequired, found->second.isRequired) << letter << " " << path;
            if (element.type == SchemaType::Choice && element.words.empty()) {
                EXPECT_EQ(textsOf(letter, element), found->second.texts) << letter << " " << path;
            } else if (element.words.empty()) {
                EXPECT_TRUE(found->second.texts.empty()) << letter << " " << path;
            }
        }
        for (const auto& each : expected) {
            EXPECT_TRUE(seen.contains(each.first)) << letter << " " << each.first;
        }
    }

    pugi::xml_document schema_;
};

TEST_F(SchemaFile, HasTheElementsAndTextsOfTheTables) {
    SchemaWalk walk(schema_.child("xs:schema"));
    compare('G', walk.below("Tmats", {"TransmissionAttributes", "RecorderReproducerAttributes",
                                      "MultiplexModulationGroup", "DataLink",
                                      "VendorSpecificAttributes", "AirborneHardwareAttributes"}));
    compare('T', walk.below("TransmissionAttributes"));
    compare('R', walk.below("RecorderReproducerAttributes"));
    compare('M', walk.below("MultiplexModulationGroup", {"DataConversionAttributes"}));
    compare('P', walk.belowIn("DataLinkType", "PCMFormatAttributes",
                              {"PCMMeasurements", "BusAttributes"}));
    compare('D', walk.belowIn("PCMFormatAttributesType", "PCMMeasurements"));
    compare('A', walk.belowIn("DataLinkType", "PAMAttributes"));
    compare('S', walk.belowIn("DataLinkType", "MessageDataAttributes"));
    compare('C', walk.belowIn("DataConversionAttributesType", "Measurement"));
    auto bus = walk.belowIn("PCMFormatAttributesType", "BusAttributes");
    for (const auto& each : walk.belowIn("DataLinkType", "BusAttributes")) {
        // What one of the two places requires counts as required.
        auto& found = bus[each.first];
        const bool isRequired = found.isRequired || each.second.isRequired;
        found = each.second;
        found.isRequired = isRequired;
    }
    compare('B', bus);
}

}  // namespace
}  // namespace kavu
