#include "app/conversion/DefinitionList.h"
#include "app/conversion/EuStage.h"
#include "app/support/WidgetChecks.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class DefinitionListTest : public test::EuStage {
  protected:
    std::unique_ptr<DefinitionListDialog> make() {
        auto dialog = std::make_unique<DefinitionListDialog>(
            *form, f->context, f->conversions,
            [this](const std::string& name) {
                edited.push_back(name);
                return onEdit && onEdit(name);
            },
            nullptr);
        dialog->show();
        return dialog;
    }
    std::vector<std::string> edited;
    std::function<bool(const std::string&)> onEdit;
};

TEST_F(DefinitionListTest, PrintIsEnabledWhereCalibrationsCanBePrinted) {
    open();
    EXPECT_FALSE(find<QPushButton>(*make(), "print")->isEnabled());
    const QWidget* over = nullptr;
    form->reports.calibrations = [&](QWidget* window) { over = window; };
    const auto dialog = make();
    press(*dialog, "print");
    EXPECT_EQ(over, dialog.get());
}

TEST_F(DefinitionListTest, ShowsAllAndFiltersByType) {
    open();
    const auto dialog = make();
    EXPECT_EQ(test::checkWindow(*dialog), std::vector<std::string>{});
    EXPECT_EQ(dialog->list().rows(),
              (std::vector<ListRow>{{"A", "PRS - Pair Set"}, {"B", "COE - Coefficients"}}));
    EXPECT_EQ(find<QComboBox>(*dialog, "display")->itemText(0), QStringLiteral("All Measurements"));
    choose(*dialog, "display", "COE - Coefficients");
    EXPECT_EQ(dialog->list().rows(), (std::vector<ListRow>{{"B", "COE - Coefficients"}}));
    choose(*dialog, "display", "VOI - Voice");
    EXPECT_EQ(find<QLabel>(*dialog, "count")->text(),
              QStringLiteral("No Data Conversion Information Defined"));
    choose(*dialog, "display", "All Measurements");
    type(*dialog, "find", QStringLiteral("b"));
    EXPECT_EQ(dialog->list().rowCount(), 1);
}

TEST_F(DefinitionListTest, EditsTheSelectedRecordAndFollowsItsType) {
    open();
    onEdit = [this](const std::string& name) {
        auto edit = DefinitionEdit::open(f->context, f->conversions, &f->ui, name);
        return edit && edit->setValues(&f->ui, {{"DCT", "SP"}}) && edit->store(&f->ui);
    };
    const auto dialog = make();
    dialog->list().selectRow(1);
    press(*dialog, "edit");
    EXPECT_EQ(edited, std::vector<std::string>{"B"});
    EXPECT_TRUE(dialog->changedRecords());
    EXPECT_EQ(dialog->list().rows()[1], (ListRow{"B", "SP  - Special Processing"}));
    EXPECT_EQ(dialog->list().currentRow(), 1);
}

TEST_F(DefinitionListTest, DeletesAfterMessage82) {
    open();
    const auto dialog = make();
    dialog->list().selectRow(1);
    press(*dialog, "delete");
    ASSERT_TRUE(f->ui.hasBox(82));
    EXPECT_EQ(f->ui.boxes.back().titleId, 83);
    EXPECT_FALSE(dialog->changedRecords());
    f->ui.byId[82] = Button::Yes;
    press(*dialog, "delete");
    EXPECT_TRUE(dialog->changedRecords());
    EXPECT_EQ(dialog->list().currentRow(), 0);
    EXPECT_EQ(f->savedNames(), test::Names{"A"});
    EXPECT_EQ(find<QLabel>(*dialog, "count")->text(), QStringLiteral("1 measurement"));
    type(*dialog, "find", QStringLiteral("b"));
    EXPECT_EQ(dialog->list().rowCount(), 0) << "what is deleted is not found again";
}

}  // namespace
}  // namespace kavu
