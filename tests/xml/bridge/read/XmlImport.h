// A document in a file, its import, and what that says.
#pragma once

#include "core/text/Text.h"
#include "support/TestContext.h"
#include "xml/bridge/read/XmlToTmats.h"

#include <string>
#include <utility>
#include <vector>

namespace kavu::test {

using Texts = std::vector<std::string>;

class XmlImport : public testing::Test {
  protected:
    /// The commands for the content of a `Tmats` element.
    std::string imported(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return importedFile("<Tmats>" + content + "</Tmats>", dialect);
    }
    std::string importedFile(const std::string& text, XmlDialect dialect = XmlDialect::Classic) {
        writeFile(folder_ / "in.xml", text);
        status_.clear();
        XmlToTmats import([this](XmlStatusLevel level,
                                 const std::string& said) { status_.emplace_back(level, said); },
                          folder_ / "in.xml", folder_ / "out.tma", dialect);
        EXPECT_TRUE(import.convert(nullptr));
        messages_ = import.messages();
        leftOut_ = import.leftOut();
        version_ = import.version();
        isInNamespace_ = import.isInSchemaNamespace();
        return import.commands();
    }
    /// The commands for the content of a group in the first source or link.
    std::string group(const std::string& path, const std::string& content,
                      XmlDialect dialect = XmlDialect::Classic) {
        std::string text = content;
        std::string rest = path;
        while (!rest.empty()) {
            const auto slash = rest.rfind('/');
            const auto step = slash == std::string::npos ? rest : rest.substr(slash + 1);
            const auto name = step == "DataSource" ? " Name=\"S\" Type=\"Tape\""
                              : step == "DataLink" ? " Name=\"L\""
                                                   : "";
            text = "<" + step + name + ">" + text + "</" + step + ">";
            rest = slash == std::string::npos ? "" : rest.substr(0, slash);
        }
        return imported(text, dialect);
    }
    std::string pcm(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return group("DataSource/DataLink/PCMFormatAttributes", content, dialect);
    }
    std::string measurement(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return pcm("<PCMMeasurements><MeasurementList Name=\"ML\"><Measurement Name=\"A\">" +
                       content + "</Measurement></MeasurementList></PCMMeasurements>",
                   dialect);
    }
    std::string bus(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return group("DataSource/DataLink/BusAttributes", content, dialect);
    }
    std::string conversion(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return group("DataSource/DataLink/DataConversionAttributes",
                     "<Measurement Name=\"A\">" + content + "</Measurement>", dialect);
    }
    std::string recorder(const std::string& content, XmlDialect dialect = XmlDialect::Classic) {
        return group("DataSource/RecorderReproducerAttributes", content, dialect);
    }
    [[nodiscard]] Texts statusTexts() const {
        Texts texts;
        for (const auto& each : status_) {
            texts.push_back(each.second);
        }
        return texts;
    }
    static bool has(const std::string& commands, const std::string& command) {
        return ("\n" + commands).find("\n" + command + "\n") != std::string::npos;
    }
    static std::string linesWith(const std::string& commands, const std::string& start) {
        std::string found;
        for (const auto& line : splitLines(commands)) {
            found += line.starts_with(start) ? line + "\n" : "";
        }
        return found;
    }

    TempFolder folder_;
    std::vector<std::pair<XmlStatusLevel, std::string>> status_;
    Texts messages_;
    std::vector<XmlLeftOut> leftOut_;
    int version_ = -1;
    bool isInNamespace_ = false;
};

}  // namespace kavu::test
