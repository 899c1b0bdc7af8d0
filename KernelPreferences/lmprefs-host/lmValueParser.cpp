#include "lmValueParser.h"

#include "lmStoreFile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace {

bool fail(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}

// The whole text must be the number; from_chars reads decimal, "inf" and "nan".
template <class T>
bool parseNumber(const QString &text, T &out)
{
    std::string utf8 = text.trimmed().toStdString();
    if (utf8.size() > 1 && utf8[0] == '+' && utf8[1] != '-')
        utf8.erase(0, 1);
    if (utf8.empty())
        return false;
    const char *end = utf8.data() + utf8.size();
    const auto result = std::from_chars(utf8.data(), end, out);
    return result.ec == std::errc() && result.ptr == end;
}

template <class T>
bool parseNumberAs(const QString &text, const char *expected, boost::any &out, QString *error)
{
    T value{};
    if (!parseNumber(text, value))
        return fail(error, QStringLiteral("expected %1, found \"%2\"").arg(QLatin1String(expected), text));
    out = value;
    return true;
}

// Lists and colours are written as in the store file; a bare JSON value is
// wrapped so that the document reader can parse it.
bool parseJson(const QString &text, const QString &type, boost::any &out, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &parseError);
    if (document.isNull())
        return fail(error, QStringLiteral("not valid JSON: %1").arg(parseError.errorString()));
    if (!document.isArray())
        return fail(error, QStringLiteral("expected a JSON array"));
    return lmStoreDocument::readValue(type, document.array(), out, error);
}

} // namespace

namespace lmValueParser {

bool parse(const QString &text, const boost::any &like, boost::any &out, QString *error)
{
    const QString type = lmStoreDocument::typeName(like);
    if (type == QLatin1String("int")) {
        return parseNumberAs<int>(text, "an int", out, error);
    } else if (type == QLatin1String("uint")) {
        return parseNumberAs<unsigned int>(text, "an unsigned int", out, error);
    } else if (type == QLatin1String("float")) {
        return parseNumberAs<float>(text, "a float", out, error);
    } else if (type == QLatin1String("double")) {
        return parseNumberAs<double>(text, "a double", out, error);
    } else if (type == QLatin1String("bool")) {
        const QString word = text.trimmed().toLower();
        if (word == QLatin1String("true") || word == QLatin1String("1"))
            out = true;
        else if (word == QLatin1String("false") || word == QLatin1String("0"))
            out = false;
        else
            return fail(error, QStringLiteral("expected true or false, found \"%1\"").arg(text));
    } else if (type == QLatin1String("string")) {
        out = text.toStdString();
    } else if (type == QLatin1String("qstring")) {
        out = text;
    } else if (!type.isEmpty()) {
        return parseJson(text, type, out, error);
    } else {
        return fail(error, QStringLiteral("the key holds a value of no preference type"));
    }
    return true;
}

bool parseUntyped(const QString &text, boost::any &out, QString *error)
{
    const QString word = text.trimmed();
    if (word == QLatin1String("true") || word == QLatin1String("false")) {
        out = word == QLatin1String("true");
        return true;
    }
    const QString expected = QStringLiteral("the key holds no value yet, so its type is told by the value: true, "
                                            "false or a JSON list of strings, numbers or [r, g, b] colours");
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    const QJsonArray items = document.array();
    if (!document.isArray() || items.isEmpty())
        return fail(error, expected);
    auto all = [&items](bool (QJsonValue::*is)() const) {
        return std::all_of(items.begin(), items.end(), [is](const QJsonValue &item) { return (item.*is)(); });
    };
    QString type;
    if (all(&QJsonValue::isString))
        type = QStringLiteral("strings");
    else if (all(&QJsonValue::isDouble))
        type = QStringLiteral("floats");
    else if (all(&QJsonValue::isArray))
        type = QStringLiteral("colors");
    else
        return fail(error, expected);
    return lmStoreDocument::readValue(type, items, out, error);
}

QString text(const boost::any &value)
{
    const QString type = lmStoreDocument::typeName(value);
    if (type == QLatin1String("string"))
        return QString::fromStdString(*boost::unsafe_any_cast<std::string>(&value));
    if (type == QLatin1String("qstring"))
        return *boost::unsafe_any_cast<QString>(&value);
    QString json = QString::fromStdString(lmStoreDocument::valueJson(value));
    // Single floating values: "nan" rather than "\"nan\"".
    if ((type == QLatin1String("float") || type == QLatin1String("double")) && json.startsWith('"'))
        json = json.mid(1, json.size() - 2);
    return json;
}

} // namespace lmValueParser
