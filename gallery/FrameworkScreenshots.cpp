#include "app/framework/EditableList.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/MessagesWindow.h"
#include "app/framework/ProgressWindow.h"
#include "app/framework/QtText.h"
#include "app/framework/RowDialog.h"
#include "app/framework/SelectDialogs.h"
#include "app/framework/StandardDialogs.h"
#include "core/talk/Messages.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <array>

#include <QFileDialog>
#include <QMessageBox>
#include <QTreeView>

namespace kavu {

namespace {

constexpr auto kClasses = std::to_array<Choice>({
    {.value = "U", .text = "Unclassified"},
    {.value = "C", .text = "Confidential"},
    {.value = "S", .text = "Secret"},
});

// A page as groups have them; its codes belong to no group.
constexpr auto kSampleFields = std::to_array<Field>({
    {.code = "XN", .label = "Program Name:", .page = "SampleFields", .limit = 16},
    {.code = "XI", .label = "Test Item:", .page = "SampleFields", .limit = 64},
    {.code = "XD",
     .label = "Origination Date:",
     .page = "SampleFields",
     .limit = 10,
     .kind = FieldKind::Date},
    {.code = "XRN", .label = "Number:", .box = "Revision", .page = "SampleFields", .limit = 4},
    {.code = "XRD",
     .label = "Date:",
     .box = "Revision",
     .page = "SampleFields",
     .limit = 10,
     .kind = FieldKind::Date},
    {.code = "XUN",
     .label = "Number:",
     .box = "Update",
     .page = "SampleFields",
     .limit = 2,
     .kind = FieldKind::Digits},
    {.code = "XUD",
     .label = "Date:",
     .box = "Update",
     .page = "SampleFields",
     .limit = 10,
     .kind = FieldKind::Date},
    {.code = "XTN", .label = "Number:", .box = "Test", .page = "SampleFields", .limit = 16},
    {.code = "XTD", .label = "Duration:", .box = "Test", .page = "SampleFields", .limit = 4},
    {.code = "XSC",
     .label = "Security Classification:",
     .box = "Handling",
     .page = "SampleFields",
     .limit = 1,
     .kind = FieldKind::Choice,
     .choices = kClasses},
    {.code = "XCT",
     .label = "Closed At:",
     .box = "Handling",
     .page = "SampleFields",
     .limit = 19,
     .kind = FieldKind::DateTime},
    {.code = "XC", .label = "Comments:", .page = "SampleComments", .kind = FieldKind::Comment},
});

/// What the pages of the sample sheet edit; the sheet keeps it alive.
struct SampleModel {
    FieldValues values = {{"XN", "Flight Test 7"},
                          {"XI", "Airframe 2, left wing strain gauges"},
                          {"XD", "01-14-2011"},
                          {"XRN", "3"},
                          {"XRD", "02-03-2011"},
                          {"XUN", "12"},
                          {"XTN", "FT-0007"},
                          {"XTD", "2.5"},
                          {"XSC", "U"},
                          {"XC",
                           "First flight with the new recorder.\x14\x15"
                           "The second antenna was not connected."}};
    std::vector<ListRow> contacts = {
        {"A. Keller", "Flight Test", "Hangar 4, Room 12", "+49 89 555 0101"},
        {"M. Okafor", "Instrumentation", "Building 17", "+49 89 555 0144"},
        {"J. Lindqvist", "Range Safety", "Tower", "+49 89 555 0172"}};
};

ListSetup contactSetup() {
    ListSetup setup;
    setup.columns = {{.title = "Name", .limit = 24, .unique = true, .required = true},
                     {.title = "Agency", .limit = 48},
                     {.title = "Address", .limit = 48},
                     {.title = "Phone", .limit = 20}};
    setup.mostRows = 9;
    setup.rowDialogTitle = "Edit Point Of Contact";
    return setup;
}

std::unique_ptr<PropertySheet> makeSampleSheet(ScreenshotStage& stage) {
    auto model = std::make_shared<SampleModel>();
    auto sheet = std::make_unique<PropertySheet>(stage.form, "Sample", "Edit Sample", "");
    sheet->addPage(std::make_unique<FieldPage>(stage.form, "SampleFields", "Program Information",
                                               kSampleFields, model->values));
    sheet->addPage(std::make_unique<ListPage>(stage.form, "SampleList", "Points Of Contact",
                                              contactSetup(), model->contacts));
    sheet->addPage(std::make_unique<FieldPage>(stage.form, "SampleComments", "Comments",
                                               kSampleFields, model->values));
    sheet->setWriter([model] { return true; });
    return sheet;
}

std::unique_ptr<QWidget> makeSortedList(ScreenshotStage& stage) {
    auto setup = contactSetup();
    setup.canMove = true;
    auto list = std::make_unique<EditableList>(stage.form, "list", setup);
    list->setRows(SampleModel().contacts);
    list->sortBy(1);
    return list;
}

std::unique_ptr<QWidget> makeSampleBox(ScreenshotStage&) {
    MessageBox box;
    box.title = "KAVU-9 Warning";
    box.text =
        "WARNING: The TMATS file you have been editing, has been modified.\n\nSave file first?";
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNoCancel;
    return makeMessageBox(box, nullptr);
}

std::unique_ptr<QWidget> makeErrorBox(ScreenshotStage&) {
    MessageBox box;
    box.id = 402;
    box.title = loadText(139).value_or("");
    box.text = loadText(402).value_or("");
    box.icon = Icon::Error;
    return makeMessageBox(box, nullptr);
}

std::unique_ptr<QWidget> makeEnterValue(ScreenshotStage& stage) {
    return std::make_unique<EnterValueDialog>(stage.form.ui,
                                              EnterValueSetup{.title = "Enter Date (MM-DD-YYYY)",
                                                              .prompt = "Origination Date:",
                                                              .initial = "01-14-2011",
                                                              .choices = {},
                                                              .check = {}},
                                              nullptr);
}

std::unique_ptr<QWidget> makeTable(ScreenshotStage&) {
    TablePrompt prompt;
    prompt.columns = {"Data Source", "Type", "Streams"};
    for (int i = 1; i <= 18; ++i) {
        prompt.rows.push_back({"SOURCE_" + std::to_string(i), i % 3 == 0 ? "Tape" : "RF",
                               std::to_string(i * 7 % 12)});
    }
    return std::make_unique<SelectDialog>(prompt, false, nullptr);
}

std::unique_ptr<QWidget> makeMessages(ScreenshotStage& stage) {
    std::vector<Finding> findings;
    for (int i = 1; i <= 12; ++i) {
        const auto n = std::to_string(i);
        auto finding =
            findingOfText("The definition of measurement 'STRAIN_" + n + "' (D-1\\MN-1-" + n +
                              ") has no word position. It was left out.",
                          i < 4 ? "Opening" : "Stream 'PCM Stream 1'");
        finding.id = 178 + i;
        finding.title = "Error Reading TMATS File";
        finding.commands = "D-1\\MN-1-" + n + ":STRAIN_" + n + ";";
        findings.push_back(std::move(finding));
    }
    auto* const model = new FindingModel;
    model->setFindings(std::move(findings));
    // The references to the context outlive the picture.
    auto window = std::make_unique<MessagesWindow>(
        stage.form.ui, stage.form.door,
        MessageLines{
            "KAVU-9 Error Messages", "TMATS File: /home/test/flight-7/flight-test.tma", {}},
        *model, [](const Finding&) { return true; }, nullptr);
    model->setParent(window.get());
    window->findChild<QTreeView*>()->setCurrentIndex(model->index(0, FindingModel::kNumber));
    return window;
}

std::unique_ptr<QWidget> makeProgress(ScreenshotStage&) {
    auto window = std::make_unique<ProgressWindow>(true, true, nullptr);
    window->setText(QStringLiteral("Reading line 184,000 of 612,000\n30% Complete"));
    window->setPercent(30);
    window->showContents();
    return window;
}

std::unique_ptr<QWidget> makeRowDialog(ScreenshotStage& stage) {
    struct Sample {
        SampleModel model;
        ListSetup setup = contactSetup();
    };
    auto sample = std::make_unique<Sample>();
    auto list = std::make_unique<EditableList>(stage.form, "list", sample->setup);
    list->setRows(sample->model.contacts);
    auto dialog = std::make_unique<RowDialog>(stage.form, *list, sample->setup, 0,
                                              sample->model.contacts.front(), false, nullptr);
    // The dialog reads its list and its columns when it is closed with OK.
    QObject::connect(dialog.get(), &QObject::destroyed,
                     [kept = std::shared_ptr<Sample>(std::move(sample)),
                      list = std::shared_ptr<EditableList>(std::move(list))] {});
    return dialog;
}

}  // namespace

void addFrameworkScreenshots(ScreenshotList& list) {
    list.addSheet({"SampleFields", "SampleList", "SampleComments"}, makeSampleSheet);
    list.add("SortedList", makeSortedList);
    list.add("MessageBox", makeSampleBox);
    list.add("MessageBoxError", makeErrorBox);
    list.add("EnterValue", makeEnterValue);
    list.add("EditRow", makeRowDialog);
    list.add("CurrentValue", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        return std::make_unique<EnterValueDialog>(stage.form.ui,
                                                  EnterValueSetup{.title = "Current Value",
                                                                  .prompt = "Type:",
                                                                  .initial = "Tape",
                                                                  .choices = {"RF", "Tape"},
                                                                  .check = {},
                                                                  .offerLock = false},
                                                  nullptr);
    });
    list.add("SelectFromTable", makeTable);
    list.add("ChooseFromList", [](ScreenshotStage&) -> std::unique_ptr<QWidget> {
        return std::make_unique<ChoiceDialog>(
            "Enter Precision",
            std::vector<std::string>{"0", "1", "2", "3", "4", "5", "6", "7", "8"}, nullptr);
    });
    list.add("ChooseFromTwo", [](ScreenshotStage&) -> std::unique_ptr<QWidget> {
        return std::make_unique<ChoiceDialog>(
            "Which of the two files should be kept?",
            std::vector<std::string>{"Keep The File On The Disk", "Keep My Changes"}, nullptr);
    });
    list.add("ChooseFile", [](ScreenshotStage&) -> std::unique_ptr<QWidget> {
        FilePrompt prompt;
        prompt.title = "Open TMATS File";
        prompt.filters = {{"TMATS Files", "*.tma;*.tmt"}, {"All Files", "*"}};
        return makeFileDialog(prompt, {}, nullptr);
    });
    list.add("Messages", makeMessages);
    list.add("ProgressWindow", makeProgress);
}

}  // namespace kavu
