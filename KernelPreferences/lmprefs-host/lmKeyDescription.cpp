#include "lmKeyDescription.h"

#include "lmKeyBinding.h"
#include "lmPreferencesHost.h"
#include "lmPreferencesSession.h"
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLayout>
#include <QStackedWidget>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace lmKeyDescription {

namespace {

QString plainText(const QString &text)
{
    if (Qt::mightBeRichText(text))
        return QTextDocumentFragment::fromHtml(text).toPlainText().simplified();
    QString plain = text;
    // Mnemonic markers: "&Apply" reads "Apply", "&&" reads "&".
    plain.replace(QLatin1String("&&"), QStringLiteral("\x01")).remove(QLatin1Char('&')).replace(QChar(1), QLatin1Char('&'));
    return plain.simplified();
}

// The chain of (layout, index) from layout down to the item that is widget.
bool pathTo(QLayout *layout, const QWidget *widget, std::vector<std::pair<QLayout *, int>> &path)
{
    if (!layout)
        return false;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        path.emplace_back(layout, i);
        if (item->widget() == widget || pathTo(item->layout(), widget, path))
            return true;
        path.pop_back();
    }
    return false;
}

QString labelText(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    return label ? plainText(label->text()) : QString();
}

// The label placed just before the control: in the same grid row, as its
// form row's label, or as the widget before it in a box; a box of several
// controls ("width x height") takes the label before the box.
QString neighbourLabel(const QWidget *control)
{
    const QWidget *parent = control->parentWidget();
    std::vector<std::pair<QLayout *, int>> path;
    if (!parent || !pathTo(parent->layout(), control, path))
        return QString();
    for (auto level = path.rbegin(); level != path.rend(); ++level) {
        QLayout *layout = level->first;
        const int index = level->second;
        QString text;
        if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
            int row, column, rowSpan, columnSpan;
            grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
            for (int c = column - 1; c >= 0 && text.isEmpty(); --c)
                if (QLayoutItem *item = grid->itemAtPosition(row, c))
                    if (item->widget())
                        text = labelText(item->widget());
        } else if (auto *form = qobject_cast<QFormLayout *>(layout)) {
            int row;
            QFormLayout::ItemRole role;
            form->getItemPosition(index, &row, &role);
            if (role == QFormLayout::FieldRole)
                if (QLayoutItem *item = form->itemAt(row, QFormLayout::LabelRole))
                    text = labelText(item->widget());
        } else {
            for (int i = index - 1; i >= 0; --i)
                if (QWidget *widget = layout->itemAt(i)->widget()) {
                    text = labelText(widget);
                    break;
                }
        }
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

QString titleOf(const QWidget *widget)
{
    const QVariant title = widget->property("title");
    return title.type() == QVariant::String ? plainText(title.toString()) : QString();
}

// Hidden on its page (by an edition rule, a format that does not use it, a
// tab taken out, or the page's state) rather than out of sight on another
// tab or inside a collapsed frame; the page itself need not be shown.
bool isHiddenOnPage(const QWidget *control, const QWidget *page)
{
    for (const QWidget *w = control; w && w != page; w = w->parentWidget()) {
        const QWidget *parent = w->parentWidget();
        if (const auto *stack = qobject_cast<const QStackedWidget *>(parent)) {
            // A tab page is out of sight, not gone, unless it was taken out.
            if (stack->indexOf(const_cast<QWidget *>(w)) < 0)
                return true;
            continue;
        }
        if (!w->testAttribute(Qt::WA_WState_ExplicitShowHide) || !w->testAttribute(Qt::WA_WState_Hidden))
            continue;
        if (parent && parent->property("collapsed").toBool())
            continue;
        return true;
    }
    return false;
}

struct Listing
{
    QString path;
    const void *owner = nullptr;
    QWidget *page = nullptr;
};

QString escapeCell(QString text)
{
    return text.replace(QLatin1Char('|'), QLatin1String("\\|")).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QString number(double value)
{
    return QString::number(value, 'g', 15);
}

} // namespace

QString labelOf(const QWidget *control)
{
    if (const auto *group = qobject_cast<const QGroupBox *>(control))
        return plainText(group->title());
    if (const auto *button = qobject_cast<const QAbstractButton *>(control))
        if (!button->text().isEmpty())
            return plainText(button->text());
    if (const QWidget *window = control->window())
        for (const QLabel *label : window->findChildren<QLabel *>())
            if (label->buddy() == control)
                return plainText(label->text());
    const QString neighbour = neighbourLabel(control);
    if (!neighbour.isEmpty())
        return neighbour;
    for (const QWidget *w = control->parentWidget(); w; w = w->parentWidget()) {
        const QString title = titleOf(w);
        if (!title.isEmpty())
            return title;
    }
    return QString();
}

std::vector<Row> describe(lmPreferencesSession &session)
{
    using Category = lmPreferencesHost::Category;
    std::vector<Listing> listings;
    std::map<const void *, Category> categories;
    for (const Category &category : lmPreferencesHost::categories())
        categories.emplace(category.object(), category);
    std::map<const void *, bool> hasPage;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages()) {
        listings.push_back({page.path(), page.owner.object(), page.widget});
        hasPage[page.owner.object()] = true;
    }
    for (const Category &category : lmPreferencesHost::categories())
        if (!hasPage[category.object()])
            listings.push_back({category.path(), category.object(), nullptr});

    std::set<std::string> written;
    for (const Listing &listing : listings)
        for (const std::string &key : session.defaultsOf(categories.at(listing.owner)).keys())
            written.insert(key);

    // The controls that hold keys, per listing, in the order they were built:
    // those a person can reach on the page, for keys its category writes (or
    // that no category gives a default).
    struct Bound
    {
        std::string key;
        const QWidget *control;
    };
    std::vector<std::vector<Bound>> bound(listings.size());
    for (std::size_t i = 0; i < listings.size(); ++i) {
        if (!listings[i].page)
            continue;
        const lmMessage &defaults = session.defaultsOf(categories.at(listings[i].owner));
        for (const QWidget *control : listings[i].page->findChildren<QWidget *>()) {
            if (isHiddenOnPage(control, listings[i].page))
                continue;
            for (const QString &name : lmBoundKeys(control)) {
                const std::string key = name.toStdString();
                if (defaults.contains(key) || !written.count(key))
                    bound[i].push_back({key, control});
            }
        }
    }

    // Where each key is listed: with its control, else with its first writer.
    std::map<std::string, std::size_t> home;
    for (std::size_t i = 0; i < listings.size(); ++i)
        for (const Bound &b : bound[i])
            home.emplace(b.key, i);
    for (std::size_t i = 0; i < listings.size(); ++i)
        for (const std::string &key : session.defaultsOf(categories.at(listings[i].owner)).keys())
            home.emplace(key, i);

    std::vector<Row> rows;
    for (std::size_t i = 0; i < listings.size(); ++i) {
        const lmMessage &defaults = session.defaultsOf(categories.at(listings[i].owner));
        auto rowOf = [&](const std::string &key, const QWidget *control) {
            Row row;
            row.page = listings[i].path;
            row.key = QString::fromStdString(key);
            const boost::any &value = defaults.get(key);
            if (!value.empty()) {
                row.type = lmStoreDocument::typeName(value);
                row.defaultValue = lmValueParser::text(value);
            }
            if (control) {
                row.label = labelOf(control);
                if (const auto *combo = qobject_cast<const QComboBox *>(control)) {
                    for (int item = 0; item < combo->count(); ++item)
                        row.items << combo->itemText(item);
                } else {
                    // Spin boxes and sliders, Qt's and the host's, share these properties.
                    bool hasMinimum = false, hasMaximum = false;
                    row.minimum = control->property("minimum").toDouble(&hasMinimum);
                    row.maximum = control->property("maximum").toDouble(&hasMaximum);
                    row.hasRange = hasMinimum && hasMaximum;
                }
            }
            return row;
        };
        for (const Bound &b : bound[i]) {
            if (home.at(b.key) != i || std::any_of(rows.begin(), rows.end(), [&b](const Row &row) {
                    return row.key == QString::fromStdString(b.key);
                }))
                continue;
            rows.push_back(rowOf(b.key, b.control));
        }
        for (const std::string &key : defaults.keys())
            if (home.at(key) == i && std::none_of(rows.begin(), rows.end(),
                                                  [&key](const Row &row) { return row.key == QString::fromStdString(key); }))
                rows.push_back(rowOf(key, nullptr));
    }
    return rows;
}

QString markdown(const std::vector<Row> &rows)
{
    QString text = QStringLiteral("| page | label | key | type | default | items / range |\n|---|---|---|---|---|---|\n");
    for (const Row &row : rows) {
        QString choices = row.items.join(QStringLiteral("; "));
        if (row.hasRange)
            choices = number(row.minimum) + QStringLiteral(" to ") + number(row.maximum);
        text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n")
                    .arg(escapeCell(row.page), escapeCell(row.label), escapeCell(row.key), escapeCell(row.type),
                         escapeCell(row.defaultValue), escapeCell(choices));
    }
    return text;
}

QByteArray json(const std::vector<Row> &rows)
{
    QJsonArray array;
    for (const Row &row : rows) {
        QJsonObject object{{"page", row.page},
                           {"label", row.label},
                           {"key", row.key},
                           {"type", row.type},
                           {"default", row.defaultValue}};
        if (!row.items.isEmpty())
            object.insert(QStringLiteral("items"), QJsonArray::fromStringList(row.items));
        if (row.hasRange)
            object.insert(QStringLiteral("range"), QJsonObject{{"minimum", row.minimum}, {"maximum", row.maximum}});
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

} // namespace lmKeyDescription
