#pragma once

#include "lmPreferencesHost.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QMap>
#include <QPixmap>
#include <QPointer>

#include <map>
#include <set>
#include <string>

class QFileSystemWatcher;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QSplitter;
class QStackedWidget;
class QTimer;
class QTreeWidget;
class QTreeWidgetItem;
class lmPreferencesSession;

// The host's preferences dialog: the tree of groups and pages in the order
// the pages were added, the selected page, a search that lands on the
// setting, the host calls as they happen, and OK / Apply / Cancel / Restore
// Defaults. Every control that holds a preference key is marked when its
// stored value differs from the default (its label in bold) and when it
// holds an edit not yet applied (a bar beside it); its context menu resets
// its key alone, and its tool tip names the key.
// The pages stay owned by their categories: the dialog hands them back when
// it is destroyed or when a category withdraws its page.
class lmPreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    enum Mark { Unmarked = 0, Modified = 1, Pending = 2 };

    explicit lmPreferencesDialog(lmPreferencesSession &session, QWidget *parent = nullptr);
    ~lmPreferencesDialog() override;

    QTreeWidget *tree() const { return m_tree; }
    QLineEdit *searchField() const { return m_search; }
    // What the search found, best first; hidden while the search is empty.
    QListWidget *results() const { return m_results; }
    QPlainTextEdit *callLogView() const { return m_callLog; }
    QPlainTextEdit *errorLogView() const { return m_errorLog; }
    // What the dialog has to say about the preferences file (a damaged file,
    // a failed save, values another instance saved); hidden when nothing.
    QLabel *noticeBar() const { return m_notice; }
    QPushButton *button(QDialogButtonBox::StandardButton which) const;
    QPushButton *restoreAllButton() const { return m_restoreAll; }

    QTreeWidgetItem *itemOf(const QWidget *page) const;
    QWidget *currentPage() const;
    bool showPage(QWidget *page);
    // "group/page" of every page the search leaves in the tree, in tree order.
    QStringList visiblePages() const;
    // The page's stored values differ from its defaults.
    bool isBold(const QWidget *page) const;
    // The page holds edits not yet applied.
    bool hasPendingEdits(const QWidget *page) const;
    // Whether OK or Apply would change anything.
    bool isPending() const;

    // Modified and Pending, or'ed, as last refreshed.
    int markOf(const QWidget *control) const;
    // The control's key, type, default and stored value, one line per key.
    QString keyInfo(const QWidget *control) const;
    // The context menu of a bound control or of its label: the widget's own
    // actions where it has some, then "Reset to Default" per key. Null for
    // a widget that names no key. The caller owns it.
    QMenu *contextMenuFor(QWidget *widget);
    // The key's default onto the control, as a pending edit.
    void resetToDefault(QWidget *control, const QString &key);
    // The control the last chosen search result lit up, while it is lit.
    QWidget *highlightedControl() const { return m_highlighted; }

    // Size, splitters and last page are kept in this file between runs.
    void setStateFile(const QString &path);

    // The dialog with this page shown, tall enough to show all of it; then
    // the dialog is as it was.
    QPixmap grabPage(QWidget *page);

public Q_SLOTS:
    void accept() override;
    void reject() override;
    void done(int result) override;
    void applyChanges();
    void restoreDefaults();
    void restoreAllDefaults();
    void setFilter(const QString &text);
    // Opens a search result: its page, its tab and frame, the control in
    // sight and lit up for a moment.
    void openResult(int row);
    // Markers of every control, page and group, and the Apply button.
    void refreshMarkers();
    // Values another instance saved onto the pages the user has not edited.
    void takeOutsideChanges();

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    // A bound control changed: its page's markers, soon.
    void controlChanged();

private:
    struct PageEntry
    {
        lmPreferencesHost::Page page;
        QScrollArea *area = nullptr;
        QTreeWidgetItem *item = nullptr;
        QWidget *overlay = nullptr;
        QList<QPointer<QWidget>> controls; // bound, reachable
        QMap<const QWidget *, QPointer<QWidget>> labels; // of each control
    };

    void rebuild();
    void queueRefresh(const QWidget *page = nullptr);
    void refreshPending(const PageEntry &entry);
    void paintMarks(const PageEntry &entry);
    void refreshTree();
    void bindControls(PageEntry &entry);
    void showLatestCall();
    void releasePage(QWidget *page);
    void currentItemChanged(QTreeWidgetItem *item);
    const PageEntry *entryOf(const QTreeWidgetItem *item) const;
    const PageEntry *entryHolding(const QWidget *widget) const;
    // A page item the search kept, under groups that are shown.
    bool isKept(const QTreeWidgetItem *item) const;
    int pageScore(const PageEntry &entry, const QString &needle) const;
    void fillResults(const QString &needle);
    // Pages into the store and the host, then the file; on a failed save
    // asks what to do, as long as the user wants to try. True once saved.
    bool commit();
    bool saveAfterFailure();
    bool mayDiscard();
    void notify(const QString &text);
    void watchStoreFile();
    void mark(const QString &what);

    lmPreferencesSession &m_session;
    QLineEdit *m_search = nullptr;
    QListWidget *m_results = nullptr;
    QTreeWidget *m_tree = nullptr;
    QLabel *m_title = nullptr;
    QStackedWidget *m_stack = nullptr;
    QWidget *m_empty = nullptr;
    QPlainTextEdit *m_callLog = nullptr;
    QPlainTextEdit *m_errorLog = nullptr;
    QLabel *m_notice = nullptr;
    QSplitter *m_split = nullptr;
    QSplitter *m_rightSplit = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    QPushButton *m_restoreAll = nullptr;
    QFileSystemWatcher *m_watcher = nullptr;
    QTimer *m_outsideChanges = nullptr;
    QTimer *m_refreshTimer = nullptr;
    QTimer *m_highlightTimer = nullptr;
    QPointer<QWidget> m_highlighted;
    QMap<const QWidget *, PageEntry> m_entries;
    QList<const QWidget *> m_order;
    // Per category: the keys with edits not yet applied; per control: marks.
    std::map<const void *, std::set<std::string>> m_pending;
    QMap<const QWidget *, int> m_marks;
    std::set<const QWidget *> m_dirtyPages;
    bool m_refreshAll = false;
    QString m_stateFile;
    int m_callLogListener = 0;
    int m_errorListener = 0;
    int m_pagesListener = 0;
};
