// The entries of File, Import and File, Export.
#include "app/Forms.h"
#include "app/framework/QtText.h"
#include "app/support/MainWindowStage.h"
#include "application/DocumentService.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTreeView>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::find;
using test::press;
using testing::HasSubstr;

constexpr const char* kSchemaRoot =
    "<Tmats xmlns=\"https://wsmrc2vger.wsmr.army.mil/rcc/manuals/106-11\">";

/// A window with the entries, and files beside its document.
class XmlEntries : public MainWindowTest {
  public:
    void begin(const std::string& file = {}) {
        MainWindowTest::begin(file);
        installForms(*window, application);
    }
    [[nodiscard]] std::string read(const char* name) { return test::readFile(folder / name); }
    void chooseInput(const char* name) {
        door.next([path = folder / name](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import TMATS XML"));
            typeFileName(dialog, path.c_str());
        });
    }
    /// Does something in the dialog of an import or export.
    void inDialog(const char* name, const std::function<void(QDialog&)>& act) {
        door.next([name, act](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QLatin1String(name));
            act(dialog);
        });
    }
    /// The window with what a conversion has said, which is closed.
    void closeSaid() {
        door.next([this](QDialog& dialog) {
            auto& model = *find<QTreeView>(dialog, "lines")->model();
            for (int row = 0; row < model.rowCount(); ++row) {
                for (int column = 0; column < model.columnCount(); ++column) {
                    said += toBytes(model.index(row, column).data().toString()) + "\n";
                }
            }
            dialog.close();
        });
    }
    [[nodiscard]] static std::string losses(QDialog& dialog) {
        const auto& model = *find<QTreeView>(dialog, "losses")->model();
        std::string text;
        for (int row = 0; row < model.rowCount(); ++row) {
            text += toBytes(model.index(row, 0).data().toString()) + "=" +
                    toBytes(model.index(row, 1).data().toString()) + " ";
        }
        return text;
    }
    [[nodiscard]] static std::string summary(QDialog& dialog) {
        return toBytes(find<QLabel>(dialog, "summary")->text());
    }

    std::string said;
};

TEST_F(XmlEntries, ExportIsThereOnlyWithADocument) {
    begin();
    EXPECT_TRUE(enabled(CommandId::ImportXml));
    EXPECT_FALSE(enabled(CommandId::ExportXml));
    ASSERT_TRUE(window->openNamed(path));
    EXPECT_TRUE(enabled(CommandId::ExportXml));
    EXPECT_EQ(window->action(CommandId::ExportXml)->statusTip(),
              QStringLiteral("Convert the document to a TMATS XML file"));
}

TEST_F(XmlEntries, ImportIsConvertedAndOpenedAndItsStatusTextsAreShown) {
    test::writeFile(folder / "in.xml",
                    "<Tmats><ProgramName>New</ProgramName><RevisionLevel>9</RevisionLevel>"
                    "<DataSource Name=\"S\" Type=\"RF\"/></Tmats>");
    begin(path);
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [&](QDialog& dialog) {
        EXPECT_FALSE(find<QCheckBox>(dialog, "schema")->isChecked());
        EXPECT_EQ(find<QLineEdit>(dialog, "output")->text(), toQString(folder / "in.tma"));
        EXPECT_EQ(summary(dialog),
                  "In this form every text of the document becomes part of a command.");
        press(dialog, "ok");
    });
    closeSaid();
    window->run(CommandId::ImportXml);
    EXPECT_THAT(read("in.tma"), HasSubstr("G\\PN:New;"));
    EXPECT_THAT(said, HasSubstr("Creating TMATS 'G' group..."));
    EXPECT_THAT(said, HasSubstr("IRIG 106 version: 2009"));
    EXPECT_THAT(said, HasSubstr("Creating TMATS 'T' group for data source 'S'..."));
    EXPECT_EQ(document().path, folder / "in.tma");
    EXPECT_THAT(title(), HasSubstr("in.tma"));
}

TEST_F(XmlEntries, ImportAsksAboutTheChangesOfTheOpenDocument) {
    test::writeFile(folder / "in.xml", "<Tmats><ProgramName>New</ProgramName></Tmats>");
    begin(path);
    document().changed = true;
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [](QDialog& dialog) { press(dialog, "ok"); });
    closeSaid();
    answer("cancel");
    window->run(CommandId::ImportXml);
    EXPECT_EQ(document().path, path) << "the user did not let it be closed";
    EXPECT_THAT(read("in.tma"), HasSubstr("G\\PN:New;")) << "what was imported is kept";
}

TEST_F(XmlEntries, ImportProposesTheFormOfTheRoot) {
    test::writeFile(folder / "in.xml",
                    std::string(kSchemaRoot) + "<ProgramName>New</ProgramName></Tmats>");
    begin();
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [](QDialog& dialog) {
        EXPECT_TRUE(find<QCheckBox>(dialog, "schema")->isChecked());
        press(dialog, "cancel");
    });
    window->run(CommandId::ImportXml);
    EXPECT_FALSE(fileExists(folder / "in.tma"));
}

TEST_F(XmlEntries, ImportCountsWhatTheChosenFormLoses) {
    test::writeFile(folder / "in.xml",
                    "<Tmats><ProgramName>New</ProgramName><Unknown>a</Unknown>"
                    "<Unknown>b</Unknown></Tmats>");
    begin();
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [](QDialog& dialog) {
        EXPECT_EQ(summary(dialog), "2 texts of the document are lost in this form:");
        EXPECT_EQ(losses(dialog), "/Tmats/Unknown=2 ");
        press(dialog, "cancel");
    });
    window->run(CommandId::ImportXml);
}

TEST_F(XmlEntries, ImportAsksBeforeItReplacesAFile) {
    test::writeFile(folder / "in.xml", "<Tmats><ProgramName>New</ProgramName></Tmats>");
    test::writeFile(folder / "in.tma", "G\\PN:Old;");
    begin();
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [this](QDialog& dialog) {
        press(dialog, "ok");
        EXPECT_EQ(read("in.tma"), "G\\PN:Old;");
        press(dialog, "ok");
    });
    door.next([](QDialog& question) {
        EXPECT_EQ(question.windowTitle(), QStringLiteral("File Already Exists"));
        press(question, "no");
    });
    answer("yes");
    closeSaid();
    window->run(CommandId::ImportXml);
    EXPECT_THAT(read("in.tma"), HasSubstr("G\\PN:New;"));
}

TEST_F(XmlEntries, ImportThatCannotBeReadReplacesNothing) {
    test::writeFile(folder / "in.xml", "<Tmats><ProgramName>");
    test::writeFile(folder / "in.tma", "G\\PN:Old;");
    begin();
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [](QDialog& dialog) {
        EXPECT_THAT(summary(dialog), HasSubstr("in.xml:1:"));
        press(dialog, "ok");
    });
    answer("yes");
    door.next([](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Import TMATS XML"));
        press(box, "ok");
    });
    window->run(CommandId::ImportXml);
    EXPECT_EQ(read("in.tma"), "G\\PN:Old;");
    EXPECT_FALSE(document().open);
}

TEST_F(XmlEntries, ImportThatCannotBeReadMakesAnEmptyFileThatIsNotOpened) {
    test::writeFile(folder / "in.xml", "no XML");
    begin();
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [](QDialog& dialog) { press(dialog, "ok"); });
    closeSaid();
    window->run(CommandId::ImportXml);
    EXPECT_EQ(read("in.tma"), "");
    EXPECT_THAT(said, HasSubstr("in.xml:1:"));
    EXPECT_FALSE(document().open);
}

TEST_F(XmlEntries, ImportDoesNotWriteOverTheOpenDocumentOrItsInput) {
    test::writeFile(folder / "in.xml", "<Tmats><ProgramName>New</ProgramName></Tmats>");
    begin(path);
    const auto before = test::readFile(path);
    chooseInput("in.xml");
    inDialog("ImportTmatsXml", [this](QDialog& dialog) {
        for (const auto& output : {path, folder / "in.xml"}) {
            find<QLineEdit>(dialog, "output")->setText(toQString(output));
            press(dialog, "ok");
        }
        press(dialog, "cancel");
    });
    answer("ok");
    answer("ok");
    window->run(CommandId::ImportXml);
    EXPECT_EQ(test::readFile(path), before);
    EXPECT_EQ(read("in.xml"), "<Tmats><ProgramName>New</ProgramName></Tmats>");
}

TEST_F(XmlEntries, ExportWritesTheDocumentAndShowsItsStatusTexts) {
    begin(path);
    inDialog("ExportTmatsXml", [this](QDialog& dialog) {
        EXPECT_EQ(find<QLineEdit>(dialog, "output")->text(), toQString(folder / "flight.xml"));
        EXPECT_THAT(summary(dialog), HasSubstr("lost in this form:"));
        EXPECT_NE(losses(dialog), "");
        press(dialog, "ok");
    });
    closeSaid();
    window->run(CommandId::ExportXml);
    EXPECT_THAT(read("flight.xml"), HasSubstr("<DataSource Name="));
    EXPECT_THAT(read("flight.xml"), HasSubstr("This XML file created on 01-02-2026 at 03:04:05"));
    EXPECT_THAT(said, HasSubstr("Converting TMATS file to XML..."));
    EXPECT_THAT(said, HasSubstr("Converting TMATS 'G' group to XML..."));
    EXPECT_EQ(document().path, path);
    EXPECT_FALSE(document().changed);
}

TEST_F(XmlEntries, ExportWritesTheSchemasFormIfItIsChosen) {
    begin(path);
    inDialog("ExportTmatsXml", [](QDialog& dialog) {
        const auto classic = losses(dialog);
        find<QCheckBox>(dialog, "schema")->click();
        EXPECT_NE(losses(dialog), classic) << "counted for the form";
        press(dialog, "ok");
    });
    closeSaid();
    window->run(CommandId::ExportXml);
    EXPECT_THAT(read("flight.xml"), HasSubstr("xmlns=\"https://wsmrc2vger"));
}

TEST_F(XmlEntries, ExportTakesTheDocumentAsItIsNow) {
    begin(path);
    door.next([](QDialog& sheet) {
        test::type(sheet, "PN", QStringLiteral("Changed here"));
        press(sheet, "ok");
    });
    answer("yes");
    window->run(CommandId::General);
    ASSERT_TRUE(document().changed);
    inDialog("ExportTmatsXml", [](QDialog& dialog) { press(dialog, "ok"); });
    closeSaid();
    window->run(CommandId::ExportXml);
    EXPECT_THAT(read("flight.xml"), HasSubstr("Changed here"));
    EXPECT_EQ(test::readFile(path).find("Changed here"), std::string::npos);
    EXPECT_TRUE(document().changed);
}

TEST_F(XmlEntries, ExportHasOnlyTheLinksThatAreChosenAndNeedsOne) {
    begin(path);
    inDialog("ExportTmatsXml", [](QDialog& dialog) {
        auto* const links = find<QListWidget>(dialog, "links");
        ASSERT_GT(links->count(), 1);
        for (int i = 0; i < links->count(); ++i) {
            links->item(i)->setCheckState(Qt::Unchecked);
        }
        EXPECT_EQ(summary(dialog), "No data link is chosen.");
        press(dialog, "ok");
        links->item(1)->setCheckState(Qt::Checked);
        press(dialog, "ok");
    });
    answer("ok");
    closeSaid();
    window->run(CommandId::ExportXml);
    const auto xml = read("flight.xml");
    std::size_t links = 0;
    for (auto at = xml.find("<DataLink "); at != std::string::npos;
         at = xml.find("<DataLink ", at + 1)) {
        ++links;
    }
    EXPECT_EQ(links, 1U);
}

TEST_F(XmlEntries, ExportThatCannotBeWrittenSaysSoAndLeavesTheDocument) {
    begin(path);
    inDialog("ExportTmatsXml", [this](QDialog& dialog) {
        find<QLineEdit>(dialog, "output")->setText(toQString(folder / "none/out.xml"));
        press(dialog, "ok");
    });
    door.next([](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Export TMATS XML"));
        press(box, "ok");
    });
    window->run(CommandId::ExportXml);
    EXPECT_TRUE(document().open);
}

TEST_F(XmlEntries, EscapeCostsNothing) {
    begin(path);
    inDialog("ExportTmatsXml", [](QDialog& dialog) {
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    window->run(CommandId::ExportXml);
    EXPECT_FALSE(fileExists(folder / "flight.xml"));
}

}  // namespace
}  // namespace kavu
