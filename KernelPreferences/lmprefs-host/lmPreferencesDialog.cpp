#include "lmPreferencesDialog.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmPreferencesSession.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>

namespace {

const int kPageRole = Qt::UserRole + 1;
// Set on a group whose own page the search left out but whose pages it kept.
const int kFilteredOutRole = Qt::UserRole + 2;

// A page whose name repeats its group's is the group's own page.
bool isGroupPage(const lmPreferencesHost::Page &page)
{
    return page.page.isEmpty() || page.page == page.group;
}

QString plainText(const QString &text)
{
    if (Qt::mightBeRichText(text))
        return QTextDocumentFragment::fromHtml(text).toPlainText();
    QString plain = text;
    // Mnemonic markers: "&Apply" reads "Apply", "&&" reads "&".
    plain.replace(QLatin1String("&&"), QStringLiteral("\x01")).remove(QLatin1Char('&')).replace(QChar(1), QLatin1Char('&'));
    return plain;
}

enum class HiddenOnPage { ForGood, OrOnAnotherTab };

// Hidden for good (by an edition rule, say), rather than out of sight on
// another tab or inside a collapsed frame; the page itself need not be shown.
bool hiddenOnPage(const QWidget *widget, const QWidget *page, HiddenOnPage how = HiddenOnPage::ForGood)
{
    for (const QWidget *w = widget; w && w != page; w = w->parentWidget()) {
        if (!w->testAttribute(Qt::WA_WState_ExplicitShowHide) || !w->testAttribute(Qt::WA_WState_Hidden))
            continue;
        const QWidget *parent = w->parentWidget();
        if (qobject_cast<const QStackedWidget *>(parent) ? how == HiddenOnPage::ForGood
                                                          : parent && parent->property("collapsed").toBool())
            continue;
        return true;
    }
    return false;
}

// How much a scroll area would have to grow to show all its contents.
QSize hiddenPart(const QScrollArea *area)
{
    const QWidget *contents = area->widget();
    if (!contents)
        return QSize();
    return contents->sizeHint().expandedTo(contents->minimumSizeHint()) - area->viewport()->size();
}

// Every text a person can find on a page: titles, labels, button and
// check-box texts, combo items, tab names and tool tips.
QStringList textsOf(QWidget *page)
{
    QStringList texts;
    QList<QWidget *> widgets = page->findChildren<QWidget *>();
    widgets.prepend(page);
    for (QWidget *widget : widgets) {
        if (hiddenOnPage(widget, page))
            continue;
        texts << widget->toolTip();
        if (auto *label = qobject_cast<QLabel *>(widget))
            texts << plainText(label->text());
        else if (auto *button = qobject_cast<QAbstractButton *>(widget))
            texts << plainText(button->text());
        else if (auto *combo = qobject_cast<QComboBox *>(widget))
            for (int i = 0; i < combo->count(); ++i)
                texts << combo->itemText(i) << combo->itemData(i, Qt::ToolTipRole).toString();
        else if (auto *tabs = qobject_cast<QTabWidget *>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                texts << plainText(tabs->tabText(i)) << tabs->tabToolTip(i);
        // Group boxes and collapsible frames carry a title property.
        const QVariant title = widget->property("title");
        if (title.type() == QVariant::String)
            texts << plainText(title.toString());
    }
    texts.removeAll(QString());
    return texts;
}

} // namespace

lmPreferencesDialog::lmPreferencesDialog(lmPreferencesSession &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setWindowTitle(tr("Preferences"));
    setSizeGripEnabled(true);

    m_search = new QLineEdit;
    m_search->setPlaceholderText(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_tree = new QTreeWidget;
    m_tree->setHeaderHidden(true);
    m_tree->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_tree->setColumnCount(1);
    auto *left = new QWidget;
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_search);
    leftLayout->addWidget(m_tree);

    m_title = new QLabel;
    QFont titleFont = m_title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.25);
    m_title->setFont(titleFont);
    m_stack = new QStackedWidget;
    m_empty = new QLabel(tr("No page matches the search."));
    static_cast<QLabel *>(m_empty)->setAlignment(Qt::AlignCenter);
    m_stack->addWidget(m_empty);
    auto *pageArea = new QWidget;
    auto *pageLayout = new QVBoxLayout(pageArea);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    pageLayout->addWidget(m_title);
    pageLayout->addWidget(m_stack, 1);

    m_callLog = new QPlainTextEdit;
    m_callLog->setReadOnly(true);
    m_callLog->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_callLog->setMaximumBlockCount(5000);
    m_callLog->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_errorLog = new QPlainTextEdit;
    m_errorLog->setReadOnly(true);
    m_errorLog->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_errorLog->setFont(m_callLog->font());
    auto *logArea = new QTabWidget;
    logArea->setDocumentMode(true);
    logArea->addTab(m_callLog, tr("Host calls"));
    logArea->addTab(m_errorLog, tr("Host errors"));

    auto *right = new QSplitter(Qt::Vertical);
    right->addWidget(pageArea);
    right->addWidget(logArea);
    right->setStretchFactor(0, 3);
    right->setStretchFactor(1, 1);
    right->setSizes({470, 150});
    right->setChildrenCollapsible(false);

    auto *split = new QSplitter(Qt::Horizontal);
    split->addWidget(left);
    split->addWidget(right);
    split->setStretchFactor(1, 1);
    split->setSizes({230, 730});
    split->setChildrenCollapsible(false);

    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel
                                     | QDialogButtonBox::RestoreDefaults);
    m_restoreAll = m_buttons->addButton(tr("Restore All Defaults"), QDialogButtonBox::ResetRole);

    m_notice = new QLabel;
    m_notice->setWordWrap(true);
    m_notice->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_notice->setFrameShape(QFrame::StyledPanel);
    m_notice->setMargin(6);
    m_notice->setAutoFillBackground(true);
    m_notice->setBackgroundRole(QPalette::ToolTipBase);
    m_notice->setForegroundRole(QPalette::ToolTipText);
    m_notice->hide();

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_notice);
    layout->addWidget(split, 1);
    layout->addWidget(m_buttons);
    resize(960, 680);

    connect(m_buttons, &QDialogButtonBox::accepted, this, &lmPreferencesDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &lmPreferencesDialog::reject);
    connect(button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &lmPreferencesDialog::applyChanges);
    connect(button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &lmPreferencesDialog::restoreDefaults);
    connect(m_restoreAll, &QPushButton::clicked, this, &lmPreferencesDialog::restoreAllDefaults);
    connect(m_search, &QLineEdit::textChanged, this, &lmPreferencesDialog::setFilter);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *item) { currentItemChanged(item); });

    for (const QString &line : lmCallLog::lines())
        m_callLog->appendPlainText(line);
    showLatestCall();
    m_callLogListener = lmCallLog::addListener([this](const QString &line) {
        m_callLog->appendPlainText(line);
        showLatestCall();
    });
    // The host's error log, one line per message; its tab counts them.
    const auto showErrors = [this, logArea] {
        const int count = m_errorLog->blockCount() - (m_errorLog->toPlainText().isEmpty() ? 1 : 0);
        logArea->setTabText(1, count ? tr("Host errors (%1)").arg(count) : tr("Host errors"));
    };
    for (const QString &message : lmHostSettings::errorLog())
        m_errorLog->appendPlainText(message.trimmed());
    showErrors();
    m_errorListener = lmHostSettings::addErrorListener([this, showErrors](const QString &message) {
        m_errorLog->appendPlainText(message.trimmed());
        showErrors();
    });
    // Pages are withdrawn inside category destructors: hand them back at once.
    m_pagesListener = lmPreferencesHost::addPagesListener([this] { rebuild(); });

    rebuild();
    refreshBold();
    m_session.beginEditing();

    const lmStoreFile::LoadResult loaded = m_session.loadResult();
    if (loaded == lmStoreFile::LoadedFromBackup || loaded == lmStoreFile::Failed)
        notify(m_session.loadMessages().join(QLatin1Char(' '))
               + tr(" Saving asks before the damaged file is replaced; it is then kept beside it."));
    watchStoreFile();
}

void lmPreferencesDialog::watchStoreFile()
{
    const QString path = m_session.storeFile().path();
    if (path.isEmpty())
        return;
    // Saves replace the file, which ends a watch on the file itself: the
    // folder is watched too, and the file again after each change.
    m_watcher = new QFileSystemWatcher(this);
    m_outsideChanges = new QTimer(this);
    m_outsideChanges->setSingleShot(true);
    m_outsideChanges->setInterval(200); // another instance's save settles
    connect(m_outsideChanges, &QTimer::timeout, this, &lmPreferencesDialog::takeOutsideChanges);
    const auto rewatch = [this, path] {
        if (QFileInfo::exists(path) && !m_watcher->files().contains(path))
            m_watcher->addPath(path);
        m_outsideChanges->start();
    };
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, rewatch);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, rewatch);
    m_watcher->addPath(QFileInfo(path).absolutePath());
    if (QFileInfo::exists(path))
        m_watcher->addPath(path);
}

void lmPreferencesDialog::takeOutsideChanges()
{
    if (m_session.isLearning())
        return;
    const std::vector<std::string> taken = m_session.takeOutsideChanges();
    if (taken.empty())
        return;
    refreshBold();
    notify(tr("Another instance saved %n value(s) to %1; the pages without pending edits now show them.", nullptr,
              int(taken.size()))
               .arg(m_session.storeFile().path()));
}

void lmPreferencesDialog::notify(const QString &text)
{
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

lmPreferencesDialog::~lmPreferencesDialog()
{
    lmCallLog::removeListener(m_callLogListener);
    lmHostSettings::removeErrorListener(m_errorListener);
    lmPreferencesHost::removePagesListener(m_pagesListener);
    const QList<const QWidget *> pages = m_order;
    for (const QWidget *page : pages)
        releasePage(const_cast<QWidget *>(page));
}

QPushButton *lmPreferencesDialog::button(QDialogButtonBox::StandardButton which) const
{
    return m_buttons->button(which);
}

void lmPreferencesDialog::releasePage(QWidget *page)
{
    const auto it = m_entries.find(page);
    if (it == m_entries.end())
        return;
    if (it->area) {
        if (QWidget *widget = it->area->takeWidget()) {
            widget->hide();
            widget->setParent(nullptr);
        }
        delete it->area;
    }
    m_entries.erase(it);
    m_order.removeAll(page);
}

void lmPreferencesDialog::rebuild()
{
    QWidget *current = currentPage();
    const std::vector<lmPreferencesHost::Page> pages = lmPreferencesHost::pages();

    const QList<const QWidget *> known = m_order;
    for (const QWidget *page : known) {
        const bool present = std::any_of(pages.begin(), pages.end(),
                                         [page](const lmPreferencesHost::Page &p) { return p.widget == page; });
        if (!present)
            releasePage(const_cast<QWidget *>(page));
    }

    const QSignalBlocker blocker(m_tree);
    m_tree->clear();
    m_order.clear();
    QMap<QString, QTreeWidgetItem *> groups;
    for (const lmPreferencesHost::Page &page : pages) {
        PageEntry &entry = m_entries[page.widget];
        entry.page = page;
        if (!entry.area) {
            entry.area = new QScrollArea;
            entry.area->setWidgetResizable(true);
            entry.area->setFrameShape(QFrame::NoFrame);
            entry.area->setWidget(page.widget);
            page.widget->show();
            m_stack->addWidget(entry.area);
        }
        QTreeWidgetItem *&group = groups[page.group];
        if (!group) {
            group = new QTreeWidgetItem(m_tree, {page.group});
            group->setExpanded(true);
        }
        if (isGroupPage(page) && !group->data(0, kPageRole).isValid()) {
            entry.item = group;
        } else {
            entry.item = new QTreeWidgetItem(group, {page.page.isEmpty() ? page.group : page.page});
        }
        entry.item->setData(0, kPageRole, QVariant::fromValue(reinterpret_cast<quintptr>(page.widget)));
        m_order.append(page.widget);
    }
    for (QTreeWidgetItem *group : groups)
        group->setExpanded(true);

    if (!current || !showPage(current))
        if (!m_order.isEmpty())
            showPage(const_cast<QWidget *>(m_order.first()));
    if (m_order.isEmpty())
        currentItemChanged(nullptr);
    setFilter(m_search->text());

    // Learning the defaults runs each category's setDefault: not from inside
    // the constructor or destructor that added or withdrew the page.
    queueRefreshBold();
}

void lmPreferencesDialog::queueRefreshBold()
{
    if (m_boldQueued)
        return;
    m_boldQueued = true;
    QTimer::singleShot(0, this, [this] {
        m_boldQueued = false;
        refreshBold();
    });
}

const lmPreferencesDialog::PageEntry *lmPreferencesDialog::entryOf(const QTreeWidgetItem *item) const
{
    if (!item)
        return nullptr;
    const QVariant data = item->data(0, kPageRole);
    if (!data.isValid())
        return nullptr;
    const auto it = m_entries.find(reinterpret_cast<const QWidget *>(data.value<quintptr>()));
    return it == m_entries.end() ? nullptr : &*it;
}

QTreeWidgetItem *lmPreferencesDialog::itemOf(const QWidget *page) const
{
    const auto it = m_entries.find(page);
    return it == m_entries.end() ? nullptr : it->item;
}

QWidget *lmPreferencesDialog::currentPage() const
{
    const PageEntry *entry = entryOf(m_tree->currentItem());
    return entry ? entry->page.widget : nullptr;
}

bool lmPreferencesDialog::showPage(QWidget *page)
{
    QTreeWidgetItem *item = itemOf(page);
    if (!item)
        return false;
    m_tree->setCurrentItem(item);
    currentItemChanged(item);
    return true;
}

bool lmPreferencesDialog::isKept(const QTreeWidgetItem *item) const
{
    if (!entryOf(item) || item->data(0, kFilteredOutRole).toBool())
        return false;
    for (; item; item = item->parent())
        if (item->isHidden())
            return false;
    return true;
}

void lmPreferencesDialog::currentItemChanged(QTreeWidgetItem *item)
{
    if (item && !isKept(item)) {
        // A group without a page of its own (or whose page the search left
        // out) opens its first page.
        for (int i = 0; i < item->childCount(); ++i)
            if (isKept(item->child(i))) {
                item = item->child(i);
                m_tree->setCurrentItem(item);
                break;
            }
    }
    if (!isKept(item)) {
        m_title->clear();
        m_stack->setCurrentWidget(m_empty);
        return;
    }
    const lmPreferencesHost::Page &page = entryOf(item)->page;
    m_title->setText(isGroupPage(page) ? page.group : page.group + QStringLiteral(" / ") + page.page);
    m_stack->setCurrentWidget(entryOf(item)->area);
}

QStringList lmPreferencesDialog::visiblePages() const
{
    QStringList paths;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        if (isKept(*it))
            paths << entryOf(*it)->page.path();
    return paths;
}

bool lmPreferencesDialog::isBold(const QWidget *page) const
{
    const QTreeWidgetItem *item = itemOf(page);
    return item && item->font(0).bold();
}

bool lmPreferencesDialog::pageMatches(const PageEntry &entry, const QString &needle) const
{
    if (entry.page.path().contains(needle, Qt::CaseInsensitive))
        return true;
    const QStringList texts = textsOf(entry.page.widget);
    return std::any_of(texts.begin(), texts.end(),
                       [&needle](const QString &text) { return text.contains(needle, Qt::CaseInsensitive); });
}

void lmPreferencesDialog::setFilter(const QString &text)
{
    const QString needle = text.simplified();
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *group = m_tree->topLevelItem(i);
        const PageEntry *own = entryOf(group);
        bool anyChild = false;
        for (int c = 0; c < group->childCount(); ++c) {
            QTreeWidgetItem *child = group->child(c);
            const PageEntry *entry = entryOf(child);
            const bool shown = needle.isEmpty() || (entry && pageMatches(*entry, needle));
            child->setHidden(!shown);
            anyChild = anyChild || shown;
        }
        const bool groupMatches = needle.isEmpty() || group->text(0).contains(needle, Qt::CaseInsensitive)
                                  || (own && pageMatches(*own, needle));
        group->setHidden(!groupMatches && !anyChild);
        // A group page shown only to hold the pages the search kept: greyed.
        const bool filteredOut = own && !groupMatches;
        group->setData(0, kFilteredOutRole, filteredOut);
        group->setData(0, Qt::ForegroundRole,
                       filteredOut ? QVariant(palette().brush(QPalette::Disabled, QPalette::Text)) : QVariant());
        if (anyChild && !needle.isEmpty())
            group->setExpanded(true);
    }

    QTreeWidgetItem *current = m_tree->currentItem();
    if (isKept(current)) {
        currentItemChanged(current);
        return;
    }
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        if (isKept(*it)) {
            m_tree->setCurrentItem(*it);
            currentItemChanged(*it);
            return;
        }
    currentItemChanged(nullptr);
}

void lmPreferencesDialog::refreshBold()
{
    // Called from the event loop of a dialog that a category opened while
    // writing its defaults into the scratch store: later, on the real store.
    if (m_session.isLearning()) {
        queueRefreshBold();
        return;
    }
    for (const PageEntry &entry : m_entries) {
        const bool changed = m_session.differsFromDefaults(entry.page.owner);
        QFont font = entry.item->font(0);
        font.setBold(changed);
        entry.item->setFont(0, font);
        entry.item->setToolTip(0, changed ? tr("Differs from the defaults") : QString());
    }
}

void lmPreferencesDialog::mark(const QString &what)
{
    m_callLog->appendPlainText(QStringLiteral("--- %1 ---").arg(what));
}

bool lmPreferencesDialog::commit()
{
    m_session.commit();
    const bool saved = m_session.save() || saveAfterFailure();
    refreshBold();
    return saved;
}

bool lmPreferencesDialog::saveAfterFailure()
{
    for (;;) {
        const QString error = m_session.errorString();
        std::fprintf(stderr, "lmprefs-host: %s\n", qPrintable(error));
        notify(error + tr(" Your changes are kept in this window."));
        QMessageBox box(QMessageBox::Warning, windowTitle(), error, QMessageBox::NoButton, this);
        box.setInformativeText(tr("Your changes are kept. Try again, save them to another file, or go on editing."));
        QPushButton *retry = box.addButton(tr("Retry"), QMessageBox::AcceptRole);
        QPushButton *saveAs = box.addButton(tr("Save As..."), QMessageBox::ActionRole);
        QPushButton *replace = nullptr;
        if (!m_session.storeFile().canSave())
            replace = box.addButton(tr("Replace Damaged File"), QMessageBox::DestructiveRole);
        box.addButton(QMessageBox::Cancel);
        box.setDefaultButton(retry);
        box.exec();

        if (box.clickedButton() == retry) {
            if (m_session.save())
                break;
        } else if (replace && box.clickedButton() == replace) {
            QString keptAs;
            if (!m_session.storeFile().setDamagedFileAside(&keptAs)) {
                QMessageBox::warning(this, windowTitle(), m_session.storeFile().errorString());
                continue;
            }
            if (m_session.save()) {
                notify(tr("The damaged preferences file is kept as %1.").arg(keptAs));
                return true;
            }
        } else if (box.clickedButton() == saveAs) {
            const QString path = QFileDialog::getSaveFileName(this, tr("Save Preferences As"),
                                                              m_session.storeFile().path(),
                                                              tr("Preferences (*.json);;All files (*)"));
            if (path.isEmpty())
                continue;
            if (m_session.saveAs(path)) {
                notify(tr("The preferences were saved to %1, which is now the file they are kept in.").arg(path));
                return true;
            }
        } else {
            return false;
        }
    }
    notify(QString());
    return true;
}

void lmPreferencesDialog::accept()
{
    mark(tr("OK"));
    // A failed save keeps the dialog open with every edit.
    if (commit())
        QDialog::accept();
}

void lmPreferencesDialog::applyChanges()
{
    mark(tr("Apply"));
    commit();
}

void lmPreferencesDialog::reject()
{
    mark(tr("Cancel"));
    m_session.cancel();
    refreshBold();
    QDialog::reject();
}

void lmPreferencesDialog::restoreDefaults()
{
    const PageEntry *entry = entryOf(m_tree->currentItem());
    if (!entry)
        return;
    mark(tr("Restore Defaults: %1").arg(entry->page.path()));
    m_session.restoreDefaults(entry->page.owner);
    refreshBold();
}

void lmPreferencesDialog::restoreAllDefaults()
{
    mark(tr("Restore All Defaults"));
    m_session.restoreAllDefaults();
    refreshBold();
}

void lmPreferencesDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        m_session.beginEditing();
    QDialog::showEvent(event);
    QTimer::singleShot(0, this, [this] { showLatestCall(); });
}

void lmPreferencesDialog::showLatestCall()
{
    // The start of the newest line: calls with many arguments run off to the
    // right.
    m_callLog->moveCursor(QTextCursor::End);
    m_callLog->moveCursor(QTextCursor::StartOfBlock);
}

QPixmap lmPreferencesDialog::grabPage(QWidget *page)
{
    const QSize size = this->size();
    QWidget *shown = currentPage();
    if (!showPage(page))
        return QPixmap();
    grab(); // lays the dialog out
    showLatestCall();
    QPixmap pixmap = grab();
    // Grow until neither the page (nor a scroll area of its own) nor the
    // tree needs scrolling; the splitters share out the extra space, so this
    // may take a few rounds.
    const QScrollArea *area = m_entries[page].area;
    for (int round = 0; round < 8; ++round) {
        QSize hidden = hiddenPart(area).expandedTo(QSize(0, m_tree->verticalScrollBar()->maximum()));
        for (const QScrollArea *inner : page->findChildren<QScrollArea *>())
            if (!hiddenOnPage(inner, page, HiddenOnPage::OrOnAnotherTab))
                hidden = hidden.expandedTo(hiddenPart(inner));
        if (hidden.height() <= 0 && hidden.width() <= 0)
            break;
        resize(this->size() + hidden.expandedTo(QSize(0, 0)));
        pixmap = grab();
    }
    resize(size);
    if (shown)
        showPage(shown);
    return pixmap;
}
