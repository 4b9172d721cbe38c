// The window over a long operation. There is at most one; it is shown only when the
// operation takes long enough to be noticed, and it is the only window that input reaches
// while the operation runs.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kavu {

class ProgressWindow : public QDialog {
    Q_OBJECT
  public:
    /// An operation shorter than this shows nothing.
    static constexpr int kShowAfterMilliseconds = 300;
    /// Waiting events are taken at most this often.
    static constexpr int kPumpMilliseconds = 25;

    /// Does not show itself: `pump` does, when it is time.
    ProgressWindow(bool withCancel, bool withBar, QWidget* parent);
    ~ProgressWindow() override;

    /// What is below the line "Press <ESC> Or Cancel To Abort" or "Please Stand By".
    void setText(const QString& text);
    /// Percent; below 0 the bar runs without a measure.
    void setPercent(double percent);

    /// Puts text and percent on the window; `pump` does it while the window is up.
    void showContents();

    /// Lets the interface paint, and drops all input except the progress window's own.
    /// Costs a look at the clock unless `kPumpMilliseconds` have passed or `atOnce` is set.
    /// Called from within itself it does nothing.
    void pump(bool atOnce = false);

    /// True if the user has asked to cancel and the input focus is where that counts: on
    /// this window, on no window of ours, or anywhere while this one is not shown yet.
    [[nodiscard]] bool cancelPending() const;
    void clearPending() { pending_ = false; }
    [[nodiscard]] bool withCancel() const { return withCancel_; }

    void reject() override;

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void showIfLate();
    void askToCancel();
    [[nodiscard]] bool isDropped(QObject* receiver, QEvent* event);

    bool withCancel_;
    bool pending_ = false;
    bool pumping_ = false;
    bool stale_ = true;
    QString text_;
    double percent_ = 0;
    QElapsedTimer sinceOpened_;
    QElapsedTimer sincePump_;
    QLabel* heading_ = nullptr;
    QLabel* label_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

}  // namespace kavu
