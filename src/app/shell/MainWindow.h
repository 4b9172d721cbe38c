// The main window: menus, the tree of the open document, the pane with the commands of the
// selected item, the status bar. Every command lands here and goes to who does the work.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/Look.h"
#include "app/framework/QtInterface.h"
#include "app/shell/Commands.h"
#include "app/shell/TreeItem.h"
#include "core/document/DocumentChange.h"
#include "core/talk/Findings.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMainWindow>

class QActionGroup;
class QLabel;
class QMenu;
class QProgressBar;
class QSessionManager;
class QSplashScreen;
class QSplitter;

namespace kavu {

class Application;
struct DocumentContext;
class CommandPane;
class HelpWindow;
class MessageDesk;
class NoteBar;
class TreePanel;

class MainWindow : public QMainWindow, private DocumentListener {
    Q_OBJECT
  public:
    /// The application need not be started yet; `begin` does it. Both outlive the window.
    MainWindow(Application& application, DialogDoor& door);
    ~MainWindow() override;

    struct BeginOptions {
        bool splash = true;
        std::string file{};  ///< to open at once
        /// In place of the one of the settings, until another one is chosen.
        std::optional<look::Scheme> scheme{};
    };
    /// The order of the start, from the size of the screen to the welcome text. False if the
    /// program cannot go on; it has been reported.
    bool begin(const BeginOptions& options);
    /// Closes the document, with its question, keeps the settings of the window and ends the
    /// program. False if the user cancelled, or a dialog is up.
    bool quit();

    /// Gives a command its editor. The entry is then enabled whenever the document allows.
    void installEditor(CommandId id, std::function<void()> editor);
    /// The same for the entries of the tree's menus; `edit` gets the item.
    void installTreeAction(TreeAction action, std::function<void(const TreeItem&)> edit);
    /// Gives all forms what they have printed.
    void installReports(ReportCalls calls) { reports_ = std::move(calls); }
    /// Gives a command as its menu entry does. Nothing happens while that is disabled.
    void run(CommandId id);
    [[nodiscard]] QAction* action(CommandId id) const;

    /// Opens a file by name, as the command line, a drop and the recent files do.
    bool openNamed(const std::string& name);
    /// Selects what a place names, its command as well; false if it names nothing that is there.
    bool goTo(const FindingPlace& place);
    /// False while the program starts and while an operation shows its progress: a close would be
    /// dropped, or come in the middle of it.
    [[nodiscard]] bool mayBeClosed() const;
    /// Whether the session may end: not while a dialog is up, else as the user answers.
    bool maySessionEnd();
    /// Looks whether another program has changed the document's file.
    void checkDisk();

    [[nodiscard]] QtInterface& ui() { return *ui_; }
    [[nodiscard]] TreePanel& tree() { return *tree_; }
    [[nodiscard]] CommandPane& pane() { return *pane_; }
    [[nodiscard]] NoteBar& noteBar() { return *noteBar_; }
    [[nodiscard]] MessageDesk& messages() { return *desk_; }
    [[nodiscard]] const WindowFacts& facts() const { return facts_; }
    /// The open document, or null.
    [[nodiscard]] DocumentContext* document();
    /// What every form of the open document is given.
    [[nodiscard]] FormContext formContext();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void customEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    /// Tree, pane and title follow what was done to the document, whoever did it.
    void documentChanged(const DocumentChange& change) override;
    void listen(bool on);
    void makeMenus();
    void makeToolBar();
    void makeStatusBar();
    void makeDocumentArea();
    void connectHooks();
    void addCommand(const CommandRow& row, QMenu& menu);
    void fillRecentMenu();
    void installBuiltIn();
    void installChoices();
    void endCommand();
    void updateActions();
    void updateHistoryEntries();
    void updateTitle();
    void updateChecks();
    /// Builds tree, pane and menus again from the open document.
    void rebuildTree();
    void followDocument(const DocumentChange& change);
    bool selectGroup(char letter, int index);
    void openTreeItem(const TreeItem& item);
    void runTreeAction(TreeAction action, const TreeItem& item);

    bool screenIsLargeEnough();
    /// Shows the window, with the splash picture if it is wanted.
    void present();
    void restoreGeometryFromSettings();
    /// Moves and shrinks the window, once it has its frame, until its title bar and all of it are
    /// on the screen.
    void keepOnScreen();
    [[nodiscard]] QMargins frame() const;
    void storeWindowSettings();
    /// Null if it could not be shown, which has been reported.
    std::unique_ptr<QSplashScreen> showSplash();
    void waitWithSplash();
    void showWelcome();
    void offerRecovery();
    void showNotes();
    void offerEdition();
    void checkDocument();
    void showStatus(const std::string& text);
    void installAppearance();
    void applyAppearance();

    void choosePrecision();
    void editSampleRates();
    void editUpdateOptions();
    void editVersions();
    void showHelp(const std::string& topic);
    [[nodiscard]] std::string topicOfSelection() const;
    void showAbout();

    Application& application_;
    DialogDoor& door_;
    std::unique_ptr<QtInterface> ui_;
    std::map<CommandId, QAction*> commands_;
    std::map<CommandId, std::function<void()>> handlers_;
    std::map<TreeAction, std::function<void(const TreeItem&)>> treeHandlers_;
    ReportCalls reports_;
    WindowFacts facts_;
    std::vector<std::string> notes_;
    std::unique_ptr<MessageDesk> desk_;
    bool looksForEdition_ = false;  ///< a document was opened whose edition is not looked at yet
    std::optional<look::Scheme> scheme_;  ///< of this run, whatever the settings say
    bool started_ = false;
    bool beginning_ = false;  ///< the start runs, and the window cannot be closed yet
    bool splash_ = false;     ///< the picture is shown at the start and at the end
    bool quitting_ = false;
    bool checkingDisk_ = false;

    QMenu* recentMenu_ = nullptr;
    NoteBar* noteBar_ = nullptr;
    QSplitter* splitter_ = nullptr;
    TreePanel* tree_ = nullptr;
    CommandPane* pane_ = nullptr;
    HelpWindow* help_ = nullptr;
    std::string_view runningTopic_;  ///< of the command that runs; empty if none does
    QLabel* fileLabel_ = nullptr;
    QLabel* editionLabel_ = nullptr;
    QLabel* statusLabel_ = nullptr;
    QProgressBar* progress_ = nullptr;
};

}  // namespace kavu
