#pragma once

#include "lmPreferencesHost.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QMap>
#include <QPixmap>
#include <QPointer>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class QTreeWidget;
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
    bool commit();
    void mark(const QString &what);

    lmPreferencesSession &m_session;
    QLineEdit *m_search = nullptr;
    QTreeWidget *m_tree = nullptr;
    QLabel *m_title = nullptr;
    QStackedWidget *m_stack = nullptr;
    QWidget *m_empty = nullptr;
    QPlainTextEdit *m_callLog = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    QPushButton *m_restoreAll = nullptr;
    QMap<const QWidget *, PageEntry> m_entries;
    QList<const QWidget *> m_order;
    int m_callLogListener = 0;
    int m_pagesListener = 0;
    bool m_boldQueued = false;
};
