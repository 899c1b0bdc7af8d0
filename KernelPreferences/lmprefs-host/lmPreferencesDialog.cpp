#include "lmPreferencesDialog.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmKeyBinding.h"
#include "lmPreferences.h"
#include "lmPreferencesSession.h"
#include "lmSettingControls.h"
#include "lmSettingSearch.h"
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QSettings>
#include <QToolTip>
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
// A page's own state; a group's font also shows the pages under it.
const int kModifiedRole = Qt::UserRole + 3;
const int kPendingRole = Qt::UserRole + 4;

// A page whose name repeats its group's is the group's own page.
bool isGroupPage(const lmPreferencesHost::Page &page)
{
    return page.page.isEmpty() || page.page == page.group;
}

using lmSettingControls::plainText;

const int kResultPageRole = Qt::UserRole + 1;
const int kResultControlRole = Qt::UserRole + 2;

// How much a scroll area would have to grow to show all its contents.
QSize hiddenPart(const QScrollArea *area)
{
    const QWidget *contents = area->widget();
    if (!contents)
        return QSize();
    return contents->sizeHint().expandedTo(contents->minimumSizeHint()) - area->viewport()->size();
}

// The texts a person can find a widget by: its tool tip, label, button or
// check-box text, combo items, tab names and title.
QStringList ownTexts(const QWidget *widget)
{
    QStringList texts{widget->toolTip()};
    if (auto *label = qobject_cast<const QLabel *>(widget))
        texts << plainText(label->text());
    else if (auto *button = qobject_cast<const QAbstractButton *>(widget))
        texts << plainText(button->text());
    else if (auto *combo = qobject_cast<const QComboBox *>(widget))
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i) << combo->itemData(i, Qt::ToolTipRole).toString();
    else if (auto *tabs = qobject_cast<const QTabWidget *>(widget))
        for (int i = 0; i < tabs->count(); ++i)
            texts << plainText(tabs->tabText(i)) << tabs->tabToolTip(i);
    // Group boxes and collapsible frames carry a title property.
    const QVariant title = widget->property("title");
    if (title.userType() == QMetaType::QString)
        texts << plainText(title.toString());
    texts.removeAll(QString());
    return texts;
}

// The best score of any text on a page a person can reach: titles, labels,
// button and check-box texts, combo items, tab names, tool tips and the
// keys the controls hold (other tabs and collapsed frames included).
int bestScore(const QString &needle, const QStringList &texts)
{
    int best = 0;
    for (const QString &text : texts)
        best = std::max(best, lmSettingSearch::score(needle, text));
    return best;
}

// Paints the markers of a page's controls over its scroll area: a bar
// beside a control that holds an edit not yet applied, and a frame around
// the control a search result lit up.
class MarkerOverlay : public QWidget
{
public:
    MarkerOverlay(QScrollArea *area, std::function<void(QPainter &, QWidget *)> paint)
        : QWidget(area->viewport()), m_paint(std::move(paint))
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
        area->viewport()->installEventFilter(this);
        resize(area->viewport()->size());
        raise();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        m_paint(painter, this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            resize(parentWidget()->size());
        if (event->type() == QEvent::ChildAdded || event->type() == QEvent::Resize)
            raise();
        if (event->type() == QEvent::Paint || event->type() == QEvent::LayoutRequest)
            update();
        return false;
    }

private:
    std::function<void(QPainter &, QWidget *)> m_paint;
};

} // namespace

lmPreferencesDialog::lmPreferencesDialog(lmPreferencesSession &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setWindowTitle(tr("Preferences"));
    setSizeGripEnabled(true);

    m_search = new QLineEdit;
    m_search->setPlaceholderText(tr("Search settings and keys"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_results = new QListWidget;
    m_results->setUniformItemSizes(true);
    m_results->installEventFilter(this);
    m_results->hide();
    m_tree = new QTreeWidget;
    m_tree->setHeaderHidden(true);
    m_tree->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_tree->setColumnCount(1);
    // While searching, the results take the upper part above the tree.
    auto *left = new QWidget;
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_search);
    leftLayout->addWidget(m_results, 3);
    leftLayout->addWidget(m_tree, 2);

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

    m_rightSplit = new QSplitter(Qt::Vertical);
    m_rightSplit->addWidget(pageArea);
    m_rightSplit->addWidget(logArea);
    m_rightSplit->setStretchFactor(0, 3);
    m_rightSplit->setStretchFactor(1, 1);
    m_rightSplit->setSizes({470, 150});
    m_rightSplit->setChildrenCollapsible(false);

    m_split = new QSplitter(Qt::Horizontal);
    m_split->addWidget(left);
    m_split->addWidget(m_rightSplit);
    m_split->setStretchFactor(1, 1);
    m_split->setSizes({230, 730});
    m_split->setChildrenCollapsible(false);

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
    layout->addWidget(m_split, 1);
    layout->addWidget(m_buttons);
    resize(960, 680);

    m_refreshTimer = new QTimer(this);
    m_refreshTimer->setSingleShot(true);
    connect(m_refreshTimer, &QTimer::timeout, this, &lmPreferencesDialog::refreshMarkers);
    // How long a found setting stays lit up: a cue for the eye only.
    m_highlightTimer = new QTimer(this);
    m_highlightTimer->setSingleShot(true);
    m_highlightTimer->setInterval(1500);
    connect(m_highlightTimer, &QTimer::timeout, this, [this] {
        if (const PageEntry *entry = entryHolding(m_highlighted))
            entry->overlay->update();
        m_highlighted = nullptr;
    });

    connect(m_buttons, &QDialogButtonBox::accepted, this, &lmPreferencesDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &lmPreferencesDialog::reject);
    connect(button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &lmPreferencesDialog::applyChanges);
    connect(button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &lmPreferencesDialog::restoreDefaults);
    connect(m_restoreAll, &QPushButton::clicked, this, &lmPreferencesDialog::restoreAllDefaults);
    connect(m_search, &QLineEdit::textChanged, this, &lmPreferencesDialog::setFilter);
    connect(m_results, &QListWidget::itemActivated, this,
            [this](QListWidgetItem *item) { openResult(m_results->row(item)); });
    connect(m_results, &QListWidget::itemClicked, this,
            [this](QListWidgetItem *item) { openResult(m_results->row(item)); });
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *item) { currentItemChanged(item); });
    // Right clicks and tool tips on the pages' controls.
    qApp->installEventFilter(this);

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
    m_session.rememberPages();
    refreshMarkers();
    m_session.beginEditing();

    const lmStoreFile::LoadResult loaded = m_session.loadResult();
    if (loaded == lmStoreFile::LoadedFromBackup || loaded == lmStoreFile::Failed)
        notify(m_session.loadMessages().join(QLatin1Char(' '))
               + tr(" Saving asks before the damaged file is replaced; it is then kept beside it."));
    watchStoreFile();
}

lmPreferencesDialog::~lmPreferencesDialog()
{
    qApp->removeEventFilter(this);
    lmCallLog::removeListener(m_callLogListener);
    lmHostSettings::removeErrorListener(m_errorListener);
    lmPreferencesHost::removePagesListener(m_pagesListener);
    const QList<const QWidget *> pages = m_order;
    for (const QWidget *page : pages)
        releasePage(const_cast<QWidget *>(page));
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
    refreshMarkers();
    notify(tr("Another instance saved %n value(s) to %1; the pages without pending edits now show them.", nullptr,
              int(taken.size()))
               .arg(m_session.storeFile().path()));
}

void lmPreferencesDialog::notify(const QString &text)
{
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
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
    for (const QPointer<QWidget> &control : it->controls)
        if (control) {
            control->disconnect(this);
            m_marks.remove(control);
        }
    m_pending.erase(it->page.owner.object());
    m_dirtyPages.erase(page);
    m_entries.erase(it);
    m_order.removeAll(page);
}

void lmPreferencesDialog::bindControls(PageEntry &entry)
{
    // Any change a bound control announces refreshes its page's markers.
    static const char *const kChangeSignals[] = {
        "toggled(bool)",       "currentIndexChanged(int)", "textChanged(QString)",
        "valueChanged(int)",   "valueChanged(double)",     "itemChanged(QTableWidgetItem*)",
        "colorChanged(QColor)"};
    const int slot = metaObject()->indexOfSlot("controlChanged()");
    for (QWidget *control : lmSettingControls::boundControls(entry.page.widget)) {
        entry.controls << control;
        entry.labels.insert(control, lmSettingControls::labelWidgetOf(control));
        const QMetaObject *meta = control->metaObject();
        for (const char *signal : kChangeSignals) {
            const int index = meta->indexOfSignal(signal);
            if (index >= 0)
                QMetaObject::connect(control, index, this, slot, Qt::UniqueConnection);
        }
    }
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
            const QWidget *widget = page.widget;
            entry.overlay = new MarkerOverlay(entry.area, [this, widget](QPainter &painter, QWidget *overlay) {
                const auto it = m_entries.find(widget);
                if (it == m_entries.end())
                    return;
                const QColor accent = overlay->palette().color(QPalette::Highlight);
                for (const QPointer<QWidget> &control : it->controls) {
                    if (!control || !(m_marks.value(control) & Pending) || !control->isVisibleTo(widget))
                        continue;
                    QWidget *label = it->labels.value(control);
                    // A frame's title names it from afar: the bar stands by the control.
                    if (!label || label == widget || !label->isVisibleTo(widget) || label->isAncestorOf(control))
                        label = control;
                    const QRect at(label->mapTo(overlay->parentWidget(), QPoint(0, 0)), label->size());
                    const QRect own(control->mapTo(overlay->parentWidget(), QPoint(0, 0)), control->size());
                    const QRect span = at.united(QRect(at.left(), own.top(), 1, own.height()));
                    painter.fillRect(QRect(std::max(0, span.left() - 5), span.top() + 1, 3, span.height() - 2), accent);
                }
                if (m_highlighted && it->controls.contains(m_highlighted) && m_highlighted->isVisibleTo(widget)) {
                    QPen pen(accent, 2);
                    painter.setPen(pen);
                    painter.setRenderHint(QPainter::Antialiasing);
                    painter.drawRoundedRect(QRectF(QRect(m_highlighted->mapTo(overlay->parentWidget(), QPoint(0, 0)),
                                                         m_highlighted->size()))
                                                .adjusted(-3, -3, 3, 3),
                                            4, 4);
                }
            });
            bindControls(entry);
            connect(entry.area->verticalScrollBar(), &QScrollBar::valueChanged, entry.overlay,
                    qOverload<>(&QWidget::update));
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
    queueRefresh();
}

void lmPreferencesDialog::queueRefresh(const QWidget *page)
{
    if (page)
        m_dirtyPages.insert(page);
    else
        m_refreshAll = true;
    m_refreshTimer->start(0);
}

void lmPreferencesDialog::controlChanged()
{
    if (const PageEntry *entry = entryHolding(qobject_cast<QWidget *>(sender())))
        queueRefresh(entry->page.widget);
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

const lmPreferencesDialog::PageEntry *lmPreferencesDialog::entryHolding(const QWidget *widget) const
{
    for (const QWidget *w = widget; w; w = w->parentWidget()) {
        const auto it = m_entries.find(w);
        if (it != m_entries.end())
            return &*it;
    }
    return nullptr;
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
    return item && item->data(0, kModifiedRole).toBool();
}

bool lmPreferencesDialog::hasPendingEdits(const QWidget *page) const
{
    const auto it = m_entries.find(page);
    if (it == m_entries.end())
        return false;
    const auto pending = m_pending.find(it->page.owner.object());
    return pending != m_pending.end() && !pending->second.empty();
}

bool lmPreferencesDialog::isPending() const
{
    for (const auto &entry : m_pending)
        if (!entry.second.empty())
            return true;
    return m_session.hasUncommittedChanges();
}

int lmPreferencesDialog::markOf(const QWidget *control) const
{
    return m_marks.value(control, Unmarked);
}

int lmPreferencesDialog::pageScore(const PageEntry &entry, const QString &needle) const
{
    QStringList texts{entry.page.path()};
    QList<QWidget *> widgets = entry.page.widget->findChildren<QWidget *>();
    widgets.prepend(entry.page.widget);
    for (QWidget *widget : widgets) {
        if (lmSettingControls::isHidden(widget, entry.page.widget))
            continue;
        texts << ownTexts(widget) << lmBoundKeys(widget);
    }
    return bestScore(needle, texts);
}

void lmPreferencesDialog::fillResults(const QString &needle)
{
    struct Found
    {
        int score;
        int order;
        QString text;
        QString key;
        const QWidget *page;
        QWidget *control;
    };
    std::vector<Found> found;
    for (const QWidget *pageWidget : m_order) {
        const PageEntry &entry = m_entries[pageWidget];
        const QString path = entry.page.page.isEmpty() ? entry.page.group
                                                       : entry.page.group + QStringLiteral(" / ") + entry.page.page;
        bool anyControl = false;
        for (const QPointer<QWidget> &control : entry.controls) {
            if (!control || lmSettingControls::isHidden(control, pageWidget))
                continue;
            const QStringList keys = lmBoundKeys(control);
            const QString label = lmSettingControls::labelOf(control);
            // A key or label found counts for more than a word in a tool tip.
            const int named = bestScore(needle, keys + QStringList{label});
            const int score = std::max(named * 2, bestScore(needle, ownTexts(control)));
            if (score == 0)
                continue;
            anyControl = true;
            found.push_back({score, int(found.size()),
                             QStringLiteral("%1 \u2014 %2").arg(label.isEmpty() ? keys.first() : label, path),
                             keys.join(QStringLiteral(", ")), pageWidget, control});
        }
        // A page found only by its title or another text of its own.
        if (!anyControl) {
            const int score = pageScore(entry, needle);
            if (score > 0)
                found.push_back({score, int(found.size()), path, QString(), pageWidget, nullptr});
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const Found &a, const Found &b) { return a.score > b.score; });

    m_results->clear();
    for (const Found &f : found) {
        auto *item = new QListWidgetItem(f.text, m_results);
        item->setToolTip(f.key.isEmpty() ? f.text : f.key);
        item->setData(kResultPageRole, QVariant::fromValue(reinterpret_cast<quintptr>(f.page)));
        item->setData(kResultControlRole, QVariant::fromValue(reinterpret_cast<quintptr>(f.control)));
    }
    m_results->setVisible(!needle.isEmpty());
}

void lmPreferencesDialog::openResult(int row)
{
    QListWidgetItem *item = m_results->item(row);
    if (!item)
        return;
    auto *page = reinterpret_cast<QWidget *>(item->data(kResultPageRole).value<quintptr>());
    auto *control = reinterpret_cast<QWidget *>(item->data(kResultControlRole).value<quintptr>());
    const auto it = m_entries.find(page);
    if (it == m_entries.end() || !showPage(page))
        return;
    m_results->setCurrentRow(row);
    if (!control || !it->controls.contains(control))
        return;
    lmSettingControls::reveal(control, page);
    // The page lays out what was just opened before it can scroll to it.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    it->area->ensureWidgetVisible(control, 40, 40);
    m_highlighted = control;
    m_highlightTimer->start();
    it->overlay->update();
}

void lmPreferencesDialog::setFilter(const QString &text)
{
    const QString needle = lmSettingSearch::normalized(text);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *group = m_tree->topLevelItem(i);
        const PageEntry *own = entryOf(group);
        bool anyChild = false;
        for (int c = 0; c < group->childCount(); ++c) {
            QTreeWidgetItem *child = group->child(c);
            const PageEntry *entry = entryOf(child);
            const bool shown = needle.isEmpty() || (entry && pageScore(*entry, needle) > 0);
            child->setHidden(!shown);
            anyChild = anyChild || shown;
        }
        const bool groupMatches = needle.isEmpty() || lmSettingSearch::score(needle, group->text(0)) > 0
                                  || (own && pageScore(*own, needle) > 0);
        group->setHidden(!groupMatches && !anyChild);
        // A group page shown only to hold the pages the search kept: greyed.
        const bool filteredOut = own && !groupMatches;
        group->setData(0, kFilteredOutRole, filteredOut);
        group->setData(0, Qt::ForegroundRole,
                       filteredOut ? QVariant(palette().brush(QPalette::Disabled, QPalette::Text)) : QVariant());
        if (anyChild && !needle.isEmpty())
            group->setExpanded(true);
    }
    fillResults(needle);

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

void lmPreferencesDialog::refreshPending(const PageEntry &entry)
{
    const std::vector<std::string> keys = m_session.pendingKeys(entry.page.owner);
    m_pending[entry.page.owner.object()] = std::set<std::string>(keys.begin(), keys.end());
}

void lmPreferencesDialog::paintMarks(const PageEntry &entry)
{
    const lmMessage &store = lmPreferences::getData();
    const lmMessage &defaults = m_session.defaultsOf(entry.page.owner);
    const std::set<std::string> &pending = m_pending[entry.page.owner.object()];
    for (const QPointer<QWidget> &control : entry.controls) {
        if (!control)
            continue;
        int marks = Unmarked;
        for (const QString &name : lmBoundKeys(control)) {
            const std::string key = name.toStdString();
            const boost::any &defaultValue = defaults.get(key);
            if (!defaultValue.empty() && !lmStoreDocument::sameValue(store.get(key), defaultValue))
                marks |= Modified;
            if (pending.count(key))
                marks |= Pending;
        }
        m_marks[control] = marks;
        // A label a person reads: bold while the value is not the default,
        // as the page is in the tree. Containers keep their font, which
        // their children would take on.
        QWidget *label = entry.labels.value(control);
        if (label && (qobject_cast<QLabel *>(label) || qobject_cast<QAbstractButton *>(label))
            && !qobject_cast<QGroupBox *>(label)) {
            if (!label->property("lmFormBold").isValid())
                label->setProperty("lmFormBold", label->font().bold());
            QFont font = label->font();
            font.setBold((marks & Modified) || label->property("lmFormBold").toBool());
            if (font != label->font())
                label->setFont(font);
        }
    }
    entry.overlay->update();
}

void lmPreferencesDialog::refreshTree()
{
    for (const PageEntry &entry : m_entries) {
        const bool changed = m_session.differsFromDefaults(entry.page.owner);
        const bool pending = hasPendingEdits(entry.page.widget);
        entry.item->setData(0, kModifiedRole, changed);
        entry.item->setData(0, kPendingRole, pending);
        QStringList tip;
        if (changed)
            tip << tr("Differs from the defaults");
        if (pending)
            tip << tr("Holds changes not yet applied");
        entry.item->setToolTip(0, tip.join(QLatin1Char('\n')));
    }
    // Bold: differs from the defaults; italic: holds changes not yet
    // applied; a group shows what its own page and the pages under it hold.
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        QTreeWidgetItem *item = *it;
        bool changed = item->data(0, kModifiedRole).toBool();
        bool pending = item->data(0, kPendingRole).toBool();
        for (int c = 0; c < item->childCount(); ++c) {
            changed = changed || item->child(c)->data(0, kModifiedRole).toBool();
            pending = pending || item->child(c)->data(0, kPendingRole).toBool();
        }
        QFont font = item->font(0);
        font.setBold(changed);
        font.setItalic(pending);
        item->setFont(0, font);
    }
    button(QDialogButtonBox::Apply)->setEnabled(isPending());
}

void lmPreferencesDialog::refreshMarkers()
{
    // Called from the event loop of a dialog that a category opened while
    // writing its defaults into the scratch store: later, on the real store.
    if (m_session.isLearning()) {
        queueRefresh();
        return;
    }
    m_refreshTimer->stop();
    const bool all = m_refreshAll;
    for (const PageEntry &entry : m_entries)
        if (all || m_dirtyPages.count(entry.page.widget))
            refreshPending(entry);
    // Marks of every page: the stored values (and so Modified) change with
    // any page's apply, since keys are shared.
    for (const PageEntry &entry : m_entries)
        paintMarks(entry);
    m_dirtyPages.clear();
    m_refreshAll = false;
    refreshTree();
}

QString lmPreferencesDialog::keyInfo(const QWidget *control) const
{
    const PageEntry *entry = entryHolding(control);
    if (!entry)
        return QString();
    const lmMessage &defaults = m_session.defaultsOf(entry->page.owner);
    QStringList lines;
    for (const QString &name : lmBoundKeys(control)) {
        const std::string key = name.toStdString();
        const boost::any &defaultValue = defaults.get(key);
        const boost::any &stored = lmPreferences::getData().get(key);
        lines << tr("Key \"%1\" (%2): default %3, stored %4")
                     .arg(name, lmStoreDocument::typeName(defaultValue.empty() ? stored : defaultValue),
                          defaultValue.empty() ? tr("none") : lmValueParser::text(defaultValue),
                          stored.empty() ? tr("none") : lmValueParser::text(stored));
    }
    return lines.join(QLatin1Char('\n'));
}

QMenu *lmPreferencesDialog::contextMenuFor(QWidget *widget)
{
    const PageEntry *entry = entryHolding(widget);
    if (!entry)
        return nullptr;
    // The control itself, one inside it (a spin box's line edit), or the
    // label that names it.
    QWidget *control = nullptr;
    for (const QPointer<QWidget> &candidate : entry->controls)
        if (candidate && (candidate == widget || candidate->isAncestorOf(widget)
                          || entry->labels.value(candidate) == widget)) {
            control = candidate;
            break;
        }
    if (!control)
        return nullptr;
    QMenu *menu = nullptr;
    if (auto *edit = qobject_cast<QLineEdit *>(widget))
        menu = edit->createStandardContextMenu();
    if (menu)
        menu->addSeparator();
    else
        menu = new QMenu;
    const lmMessage &defaults = m_session.defaultsOf(entry->page.owner);
    const QStringList keys = lmBoundKeys(control);
    for (const QString &key : keys) {
        const boost::any &defaultValue = defaults.get(key.toStdString());
        if (defaultValue.empty())
            continue;
        const QString value = lmValueParser::text(defaultValue);
        QAction *reset = menu->addAction(keys.size() == 1 ? tr("Reset to Default (%1)").arg(value)
                                                          : tr("Reset \"%1\" to Default (%2)").arg(key, value));
        QPointer<QWidget> guard(control);
        connect(reset, &QAction::triggered, this, [this, guard, key] {
            if (guard)
                resetToDefault(guard, key);
        });
    }
    return menu;
}

void lmPreferencesDialog::resetToDefault(QWidget *control, const QString &key)
{
    const PageEntry *entry = entryHolding(control);
    if (!entry)
        return;
    m_session.showDefaultOnPage(entry->page.owner, key.toStdString());
    queueRefresh(entry->page.widget);
    refreshMarkers();
}

bool lmPreferencesDialog::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == m_search && type == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Down && m_results->isVisible() && m_results->count()) {
            m_results->setFocus();
            m_results->setCurrentRow(0);
            return true;
        }
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_results->isVisible()) {
            openResult(std::max(0, m_results->currentRow()));
            return true;
        }
        if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
        return false;
    }
    if (watched == m_results && type == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            openResult(m_results->currentRow());
            return true;
        }
        if (key == Qt::Key_Escape) {
            m_search->setFocus();
            m_search->clear();
            return true;
        }
        if (key == Qt::Key_Up && m_results->currentRow() == 0) {
            m_search->setFocus();
            return true;
        }
        return false;
    }
    if (type != QEvent::ContextMenu && type != QEvent::ToolTip && type != QEvent::MouseButtonRelease
        && type != QEvent::KeyRelease)
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || !m_stack->isAncestorOf(widget))
        return false;
    const PageEntry *entry = entryHolding(widget);
    if (!entry)
        return false;
    if (type == QEvent::MouseButtonRelease || type == QEvent::KeyRelease) {
        // Edits that no signal announces (a table cell, a colour swatch).
        queueRefresh(entry->page.widget);
        return false;
    }
    if (type == QEvent::ContextMenu) {
        QMenu *menu = contextMenuFor(widget);
        if (!menu)
            return false;
        menu->exec(static_cast<QContextMenuEvent *>(event)->globalPos());
        delete menu;
        return true;
    }
    // Tool tips: the control's own, then its key, default and stored value.
    for (const QPointer<QWidget> &control : entry->controls)
        if (control && (control == widget || control->isAncestorOf(widget)
                        || entry->labels.value(control) == widget)) {
            const QString own = widget->toolTip();
            const QString info = keyInfo(control);
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                               own.isEmpty() ? info : own + QStringLiteral("\n\n") + info, widget);
            return true;
        }
    return false;
}

void lmPreferencesDialog::mark(const QString &what)
{
    m_callLog->appendPlainText(QStringLiteral("--- %1 ---").arg(what));
}

bool lmPreferencesDialog::commit()
{
    m_session.commit();
    m_session.rememberPages();
    const bool saved = m_session.save() || saveAfterFailure();
    queueRefresh();
    refreshMarkers();
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

bool lmPreferencesDialog::mayDiscard()
{
    refreshMarkers();
    if (!isPending())
        return true;
    QMessageBox box(QMessageBox::Question, windowTitle(), tr("Discard the changes that were not applied?"),
                    QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setInformativeText(tr("OK and Apply keep them."));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Discard;
}

void lmPreferencesDialog::reject()
{
    // Cancel, Esc and the window's close button all come here.
    if (!mayDiscard())
        return;
    mark(tr("Cancel"));
    m_session.cancel();
    m_session.rememberPages();
    queueRefresh();
    refreshMarkers();
    QDialog::reject();
}

void lmPreferencesDialog::done(int result)
{
    if (!m_stateFile.isEmpty()) {
        QSettings state(m_stateFile, QSettings::IniFormat);
        state.setValue(QStringLiteral("geometry"), saveGeometry());
        state.setValue(QStringLiteral("splitter"), m_split->saveState());
        state.setValue(QStringLiteral("pageSplitter"), m_rightSplit->saveState());
        if (const QWidget *page = currentPage())
            state.setValue(QStringLiteral("page"), m_entries[page].page.path());
    }
    QDialog::done(result);
}

void lmPreferencesDialog::setStateFile(const QString &path)
{
    m_stateFile = path;
    QSettings state(path, QSettings::IniFormat);
    if (state.contains(QStringLiteral("geometry")))
        restoreGeometry(state.value(QStringLiteral("geometry")).toByteArray());
    if (state.contains(QStringLiteral("splitter")))
        m_split->restoreState(state.value(QStringLiteral("splitter")).toByteArray());
    if (state.contains(QStringLiteral("pageSplitter")))
        m_rightSplit->restoreState(state.value(QStringLiteral("pageSplitter")).toByteArray());
    const QString last = state.value(QStringLiteral("page")).toString();
    for (const QWidget *page : m_order)
        if (m_entries[page].page.path() == last)
            showPage(const_cast<QWidget *>(page));
}

void lmPreferencesDialog::restoreDefaults()
{
    const PageEntry *entry = entryOf(m_tree->currentItem());
    if (!entry)
        return;
    mark(tr("Restore Defaults: %1").arg(entry->page.path()));
    m_session.restoreDefaults(entry->page.owner);
    queueRefresh(entry->page.widget);
    refreshMarkers();
}

void lmPreferencesDialog::restoreAllDefaults()
{
    mark(tr("Restore All Defaults"));
    m_session.restoreAllDefaults();
    queueRefresh();
    refreshMarkers();
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
            if (!lmSettingControls::isHidden(inner, page, lmSettingControls::Hidden::OrOnAnotherTab))
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
