#pragma once

#include "lmPreferencesHost.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QMap>
#include <QPixmap>
#include <QPointer>

class QFileSystemWatcher;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class QTreeWidget;
class QTimer;
class QTreeWidgetItem;
class lmPreferencesSession;

// The host's preferences dialog: the tree of groups and pages in the order
// the pages were added, the selected page, a search over the pages' texts,
// the host calls as they happen, and OK / Apply / Cancel / Restore Defaults.
// The pages stay owned by their categories: the dialog hands them back when
// it is destroyed or when a category withdraws its page.
class lmPreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit lmPreferencesDialog(lmPreferencesSession &session, QWidget *parent = nullptr);
    ~lmPreferencesDialog() override;

    QTreeWidget *tree() const { return m_tree; }
    QLineEdit *searchField() const { return m_search; }
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
    bool isBold(const QWidget *page) const;

    // The dialog with this page shown, tall enough to show all of it; then
    // the dialog is as it was.
    QPixmap grabPage(QWidget *page);

public Q_SLOTS:
    void accept() override;
    void reject() override;
    void applyChanges();
    // Values another instance saved onto the pages the user has not edited.
    void takeOutsideChanges();
    void restoreDefaults();
    void restoreAllDefaults();
    void setFilter(const QString &text);
    void refreshBold();

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct PageEntry
    {
        lmPreferencesHost::Page page;
        QScrollArea *area = nullptr;
        QTreeWidgetItem *item = nullptr;
    };

    void rebuild();
    void queueRefreshBold();
    void showLatestCall();
    void releasePage(QWidget *page);
    void currentItemChanged(QTreeWidgetItem *item);
    const PageEntry *entryOf(const QTreeWidgetItem *item) const;
    // A page item the search kept, under groups that are shown.
    bool isKept(const QTreeWidgetItem *item) const;
    bool pageMatches(const PageEntry &entry, const QString &needle) const;
    // Pages into the store and the host, then the file; on a failed save
    // asks what to do, as long as the user wants to try. True once saved.
    bool commit();
    bool saveAfterFailure();
    void notify(const QString &text);
    void watchStoreFile();
    void mark(const QString &what);

    lmPreferencesSession &m_session;
    QLineEdit *m_search = nullptr;
    QTreeWidget *m_tree = nullptr;
    QLabel *m_title = nullptr;
    QStackedWidget *m_stack = nullptr;
    QWidget *m_empty = nullptr;
    QPlainTextEdit *m_callLog = nullptr;
    QPlainTextEdit *m_errorLog = nullptr;
    QLabel *m_notice = nullptr;
    QFileSystemWatcher *m_watcher = nullptr;
    QTimer *m_outsideChanges = nullptr;
    int m_errorListener = 0;
    QDialogButtonBox *m_buttons = nullptr;
    QPushButton *m_restoreAll = nullptr;
    QMap<const QWidget *, PageEntry> m_entries;
    QList<const QWidget *> m_order;
    int m_callLogListener = 0;
    int m_pagesListener = 0;
    bool m_boldQueued = false;
};
