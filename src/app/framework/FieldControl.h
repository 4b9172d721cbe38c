// The control of one field of a vocabulary table: what it shows, what the user made of it,
// and the bytes it came from.
#pragma once

#include "app/framework/FormContext.h"
#include "vocabulary/Field.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <QObject>
#include <QString>

class QWidget;

namespace kavu {

/// What a control reports to its form.
struct FieldControlHost {
    FormContext& form;
    QWidget* parent;
    std::function<void(const Field&)> edited;
    /// Why a key did nothing; empty when there is nothing to say any more.
    std::function<void(const QString&)> hint;
};

class FieldControl : public QObject {
    Q_OBJECT
  public:
    FieldControl(FieldControlHost& host, const Field& field) : host_(host), field_(field) {}

    [[nodiscard]] const Field& field() const { return field_; }
    [[nodiscard]] virtual QWidget& widget() const = 0;
    /// Shows a value, which is no edit, and keeps its bytes.
    void show(std::string_view bytes);
    /// Puts another value there, as the user could.
    void edit(std::string_view bytes);
    /// The bytes that were shown if nothing was edited, else those of the edit.
    [[nodiscard]] std::string value() const;
    [[nodiscard]] virtual bool validate() { return true; }

  protected:
    /// Puts a text with real line breaks into the widget.
    virtual void setShown(const std::string& text) = 0;
    /// What the widget holds. Two states are the same value if this is the same.
    [[nodiscard]] virtual QString held() const = 0;
    /// The bytes of what the widget holds, with real line breaks.
    [[nodiscard]] virtual std::string heldBytes() const;
    [[nodiscard]] const std::string& original() const { return original_; }

    void userEdited();
    /// Runs the rule of the semi-colon over a text that is being typed.
    void checkSemicolon(const QString& text);
    [[nodiscard]] bool refuseSemicolon();

    FieldControlHost& host_;

  private:
    const Field field_;
    std::string original_;
    QString shown_;
    bool showing_ = false;
};

/// The control for the kind of the field.
[[nodiscard]] std::unique_ptr<FieldControl> makeFieldControl(FieldControlHost& host,
                                                             const Field& field);
/// A button with the value, which asks for it with the prompt of the field: a number for
/// digits, else a text. The form of the edit checks the range.
[[nodiscard]] std::unique_ptr<FieldControl> makePromptControl(FieldControlHost& host,
                                                              const Field& field);
/// A list with free entry. It reports an edit when that is complete.
[[nodiscard]] std::unique_ptr<FieldControl> makeSuggestControl(FieldControlHost& host,
                                                               const Field& field);

}  // namespace kavu
