#include "lmKeyDescription.h"

#include "lmKeyBinding.h"
#include "lmPreferencesHost.h"
#include "lmPreferencesSession.h"
#include "lmSettingControls.h"
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace lmKeyDescription {

namespace {

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
            if (lmSettingControls::isHidden(control, listings[i].page))
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
                row.label = lmSettingControls::labelOf(control);
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
