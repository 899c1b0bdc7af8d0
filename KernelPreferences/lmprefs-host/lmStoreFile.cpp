#include "lmStoreFile.h"

#include "lmMessageHelpers.h"
#include "OpenSG/OSGColor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QLockFile>
#include <QSaveFile>

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace lmStoreDocument {

const char *const kFormat = "lmKernelPreferences-store";

namespace {

using Floats = std::vector<float>;
using Colors = std::vector<osg::Color3f>;
using Strings = std::vector<std::string>;

// --- Writing -----------------------------------------------------------

bool isUtf8(const std::string &text)
{
    const auto *p = reinterpret_cast<const unsigned char *>(text.data());
    const auto *end = p + text.size();
    while (p < end) {
        const unsigned char c = *p;
        int extra;
        char32_t code, minimum;
        if (c < 0x80) {
            ++p;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            extra = 1, code = c & 0x1F, minimum = 0x80;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2, code = c & 0x0F, minimum = 0x800;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3, code = c & 0x07, minimum = 0x10000;
        } else {
            return false;
        }
        if (end - p <= extra)
            return false;
        for (int i = 1; i <= extra; ++i) {
            if ((p[i] & 0xC0) != 0x80)
                return false;
            code = (code << 6) | (p[i] & 0x3F);
        }
        if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false;
        p += extra + 1;
    }
    return true;
}

void appendEscaped(std::string &out, char32_t code)
{
    static const char hex[] = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += hex[(code >> shift) & 0xF];
}

// One code point of a JSON string: quotes, backslashes and control
// characters escaped, the rest as UTF-8.
void appendCodePoint(std::string &out, char32_t code)
{
    switch (code) {
    case '"': out += "\\\""; return;
    case '\\': out += "\\\\"; return;
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    case '\b': out += "\\b"; return;
    case '\f': out += "\\f"; return;
    default: break;
    }
    if (code < 0x20) {
        appendEscaped(out, code);
    } else if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | (code >> 6));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += char(0xE0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else {
        out += char(0xF0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3F));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    }
}

// A valid UTF-8 string as a JSON string.
void appendUtf8String(std::string &out, const std::string &text)
{
    out += '"';
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || c == '"' || c == '\\')
            appendCodePoint(out, byte);
        else
            out += c;
    }
    out += '"';
}

// 8-bit strings carry bytes; those that are not UTF-8 go as base64.
void appendString(std::string &out, const std::string &text)
{
    if (isUtf8(text)) {
        appendUtf8String(out, text);
        return;
    }
    out += "{\"base64\": \"";
    out += QByteArray::fromStdString(text).toBase64().toStdString();
    out += "\"}";
}

// UTF-16 code units; a lone surrogate is kept as a \u escape, which the
// reader turns back into the same code unit.
void appendQString(std::string &out, const QString &text)
{
    out += '"';
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            appendCodePoint(out, QChar::surrogateToUcs4(c, text.at(i + 1)));
            ++i;
        } else if (c.isSurrogate()) {
            appendEscaped(out, c.unicode());
        } else {
            appendCodePoint(out, c.unicode());
        }
    }
    out += '"';
}

template <class F>
void appendFloating(std::string &out, F value)
{
    if (std::isnan(value)) {
        out += "\"nan\"";
    } else if (std::isinf(value)) {
        out += value < 0 ? "\"-inf\"" : "\"inf\"";
    } else if (value == 0 && std::signbit(value)) {
        // A JSON reader keeps no sign on zero.
        out += "\"-0\"";
    } else {
        char buffer[64];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
        out.append(buffer, result.ptr);
    }
}

void appendColor(std::string &out, const osg::Color3f &color)
{
    out += '[';
    appendFloating(out, color.red());
    out += ", ";
    appendFloating(out, color.green());
    out += ", ";
    appendFloating(out, color.blue());
    out += ']';
}

template <class T, class Append>
void appendList(std::string &out, const std::vector<T> &values, Append append)
{
    out += '[';
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i)
            out += ", ";
        append(out, values[i]);
    }
    out += ']';
}

template <class T>
const T *held(const boost::any &value)
{
    return lmHoldsType(value, typeid(T)) ? boost::unsafe_any_cast<T>(&value) : nullptr;
}

// --- Reading -----------------------------------------------------------

QString describe(const QJsonValue &json)
{
    switch (json.type()) {
    case QJsonValue::Null: return QStringLiteral("null");
    case QJsonValue::Bool: return json.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double: return QString::number(json.toDouble(), 'g', 17);
    case QJsonValue::String: return QLatin1Char('"') + json.toString() + QLatin1Char('"');
    case QJsonValue::Array: return QStringLiteral("an array");
    case QJsonValue::Object: return QStringLiteral("an object");
    case QJsonValue::Undefined: break;
    }
    return QStringLiteral("nothing");
}

bool wrong(QString *error, const QString &expected, const QJsonValue &json)
{
    if (error)
        *error = QStringLiteral("expected %1, found %2").arg(expected, describe(json));
    return false;
}

template <class F>
bool readFloating(const QJsonValue &json, F &out, QString *error, const QString &expected)
{
    if (json.isDouble()) {
        const double number = json.toDouble();
        if constexpr (std::is_same<F, float>::value) {
            // Beyond half an ulp above the largest float a float would be infinite.
            if (std::fabs(number) >= 0x1.ffffffp+127)
                return wrong(error, expected + QStringLiteral(" in the float range"), json);
            out = floatFromJsonNumber(number);
        } else {
            out = number;
        }
        return true;
    }
    if (json.isString()) {
        const QString text = json.toString();
        if (text == QLatin1String("nan")) {
            out = std::numeric_limits<F>::quiet_NaN();
            return true;
        }
        if (text == QLatin1String("inf") || text == QLatin1String("-inf")) {
            out = text.startsWith('-') ? -std::numeric_limits<F>::infinity() : std::numeric_limits<F>::infinity();
            return true;
        }
        if (text == QLatin1String("-0")) {
            out = -F(0);
            return true;
        }
    }
    return wrong(error, expected, json);
}

template <class I>
bool readInteger(const QJsonValue &json, I &out, QString *error, const QString &expected)
{
    if (json.isDouble()) {
        const double number = json.toDouble();
        if (number == std::floor(number) && number >= double(std::numeric_limits<I>::min())
            && number <= double(std::numeric_limits<I>::max())) {
            out = static_cast<I>(number);
            return true;
        }
    }
    return wrong(error, expected, json);
}

bool readString(const QJsonValue &json, std::string &out, QString *error)
{
    if (json.isString()) {
        out = json.toString().toStdString();
        return true;
    }
    if (json.isObject()) {
        const QJsonObject object = json.toObject();
        const QJsonValue encoded = object.value(QStringLiteral("base64"));
        if (object.size() == 1 && encoded.isString()) {
            const auto decoded = QByteArray::fromBase64Encoding(encoded.toString().toLatin1(),
                                                                QByteArray::AbortOnBase64DecodingErrors);
            if (decoded) {
                out = decoded.decoded.toStdString();
                return true;
            }
        }
    }
    return wrong(error, QStringLiteral("a string"), json);
}

bool readColor(const QJsonValue &json, osg::Color3f &out, QString *error)
{
    const QJsonArray array = json.toArray();
    if (!json.isArray() || array.size() != 3)
        return wrong(error, QStringLiteral("a colour [r, g, b]"), json);
    float rgb[3];
    for (int i = 0; i < 3; ++i)
        if (!readFloating(array.at(i), rgb[i], error, QStringLiteral("a colour component")))
            return false;
    out.setValuesRGB(rgb[0], rgb[1], rgb[2]);
    return true;
}

template <class T, class Read>
bool readList(const QJsonValue &json, std::vector<T> &out, QString *error, const QString &expected, Read read)
{
    if (!json.isArray())
        return wrong(error, expected, json);
    const QJsonArray array = json.toArray();
    std::vector<T> values;
    values.reserve(array.size());
    for (int i = 0; i < array.size(); ++i) {
        T value{};
        QString reason;
        if (!read(array.at(i), value, &reason)) {
            if (error)
                *error = QStringLiteral("item %1: %2").arg(i).arg(reason);
            return false;
        }
        values.push_back(value);
    }
    out = std::move(values);
    return true;
}

template <class T>
bool assign(bool ok, T &&value, boost::any &out)
{
    if (ok)
        out = std::forward<T>(value);
    return ok;
}

} // namespace

float floatFromJsonNumber(double number)
{
    const float nearest = static_cast<float>(number);
    if (!std::isfinite(number))
        return nearest;
    auto writtenAs = [number](float candidate) {
        char buffer[32];
        const auto written = std::to_chars(buffer, buffer + sizeof buffer, candidate);
        double back = 0;
        std::from_chars(buffer, written.ptr, back);
        return back == number;
    };
    if (writtenAs(nearest))
        return nearest;
    for (float neighbour : {std::nextafter(nearest, -std::numeric_limits<float>::infinity()),
                            std::nextafter(nearest, std::numeric_limits<float>::infinity())})
        if (writtenAs(neighbour))
            return neighbour;
    return nearest;
}

// The store file's name of each value type.
template <class T>
const char *typeNameOf()
{
    if constexpr (std::is_same<T, int>::value) return "int";
    else if constexpr (std::is_same<T, unsigned int>::value) return "uint";
    else if constexpr (std::is_same<T, float>::value) return "float";
    else if constexpr (std::is_same<T, double>::value) return "double";
    else if constexpr (std::is_same<T, bool>::value) return "bool";
    else if constexpr (std::is_same<T, std::string>::value) return "string";
    else if constexpr (std::is_same<T, QString>::value) return "qstring";
    else if constexpr (std::is_same<T, osg::Color3f>::value) return "color";
    else if constexpr (std::is_same<T, Floats>::value) return "floats";
    else if constexpr (std::is_same<T, Colors>::value) return "colors";
    else return "strings";
}

QString typeName(const boost::any &value)
{
    QString name;
    lmVisitValue(value, [&name](const auto &v) { name = QLatin1String(typeNameOf<std::decay_t<decltype(v)>>()); });
    return name;
}

void appendValue(std::string &out, int v) { out += std::to_string(v); }
void appendValue(std::string &out, unsigned int v) { out += std::to_string(v); }
void appendValue(std::string &out, float v) { appendFloating(out, v); }
void appendValue(std::string &out, double v) { appendFloating(out, v); }
void appendValue(std::string &out, bool v) { out += v ? "true" : "false"; }
void appendValue(std::string &out, const std::string &v) { appendString(out, v); }
void appendValue(std::string &out, const QString &v) { appendQString(out, v); }
void appendValue(std::string &out, const osg::Color3f &v) { appendColor(out, v); }
void appendValue(std::string &out, const Floats &v)
{
    appendList(out, v, [](std::string &o, float f) { appendFloating(o, f); });
}
void appendValue(std::string &out, const Colors &v) { appendList(out, v, appendColor); }
void appendValue(std::string &out, const Strings &v) { appendList(out, v, appendString); }

std::string valueJson(const boost::any &value)
{
    std::string out;
    if (!lmVisitValue(value, [&out](const auto &v) { appendValue(out, v); }))
        out = "null";
    return out;
}

QByteArray write(const lmMessage &store, QStringList *skipped)
{
    std::string out = "{\n    \"format\": ";
    appendUtf8String(out, kFormat);
    out += ",\n    \"version\": " + std::to_string(kVersion) + ",\n    \"values\": {";
    bool first = true;
    for (const auto &entry : store.values()) {
        const QString type = typeName(entry.second);
        if (type.isEmpty() || !isUtf8(entry.first)) {
            if (skipped)
                skipped->append(QString::fromStdString(entry.first));
            continue;
        }
        out += first ? "\n        " : ",\n        ";
        first = false;
        appendUtf8String(out, entry.first);
        out += ": {\"type\": \"" + type.toStdString() + "\", \"value\": " + valueJson(entry.second) + "}";
    }
    out += first ? "}\n}\n" : "\n    }\n}\n";
    return QByteArray::fromStdString(out);
}

bool readValue(const QString &type, const QJsonValue &json, boost::any &out, QString *error)
{
    if (type == QLatin1String("int")) {
        int v = 0;
        return assign(readInteger(json, v, error, QStringLiteral("an int")), v, out);
    }
    if (type == QLatin1String("uint")) {
        unsigned int v = 0;
        return assign(readInteger(json, v, error, QStringLiteral("an unsigned int")), v, out);
    }
    if (type == QLatin1String("float")) {
        float v = 0;
        return assign(readFloating(json, v, error, QStringLiteral("a float")), v, out);
    }
    if (type == QLatin1String("double")) {
        double v = 0;
        return assign(readFloating(json, v, error, QStringLiteral("a double")), v, out);
    }
    if (type == QLatin1String("bool")) {
        if (!json.isBool())
            return wrong(error, QStringLiteral("true or false"), json);
        out = json.toBool();
        return true;
    }
    if (type == QLatin1String("string")) {
        std::string v;
        return assign(readString(json, v, error), std::move(v), out);
    }
    if (type == QLatin1String("qstring")) {
        if (!json.isString())
            return wrong(error, QStringLiteral("a string"), json);
        out = json.toString();
        return true;
    }
    if (type == QLatin1String("color")) {
        osg::Color3f v;
        return assign(readColor(json, v, error), v, out);
    }
    if (type == QLatin1String("floats")) {
        Floats v;
        const bool ok = readList(json, v, error, QStringLiteral("a list of floats"),
                                 [](const QJsonValue &j, float &f, QString *e) {
                                     return readFloating(j, f, e, QStringLiteral("a float"));
                                 });
        return assign(ok, std::move(v), out);
    }
    if (type == QLatin1String("colors")) {
        Colors v;
        return assign(readList(json, v, error, QStringLiteral("a list of colours"), readColor), std::move(v), out);
    }
    if (type == QLatin1String("strings")) {
        Strings v;
        return assign(readList(json, v, error, QStringLiteral("a list of strings"), readString), std::move(v), out);
    }
    if (error)
        *error = QStringLiteral("unknown type \"%1\"").arg(type);
    return false;
}

bool read(const QByteArray &data, lmMessage &store, QString *error)
{
    auto failWith = [error](const QString &reason) {
        if (error)
            *error = reason;
        return false;
    };
    if (data.trimmed().isEmpty())
        return failWith(QStringLiteral("the file is empty"));
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(data, &parseError);
    if (document.isNull())
        return failWith(QStringLiteral("not valid JSON: %1 at byte %2").arg(parseError.errorString()).arg(parseError.offset));
    if (!document.isObject())
        return failWith(QStringLiteral("the document is not a JSON object"));
    const QJsonObject root = document.object();
    if (root.value(QStringLiteral("format")).toString() != QLatin1String(kFormat))
        return failWith(QStringLiteral("not a preferences store (\"format\" is not \"%1\")").arg(kFormat));
    const QJsonValue version = root.value(QStringLiteral("version"));
    if (!version.isDouble() || version.toDouble() != kVersion)
        return failWith(QStringLiteral("unsupported version %1 (this host reads version %2)")
                            .arg(describe(version))
                            .arg(kVersion));
    const QJsonValue values = root.value(QStringLiteral("values"));
    if (!values.isObject())
        return failWith(QStringLiteral("\"values\" is missing or not an object"));

    lmMessage loaded;
    const QJsonObject object = values.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QJsonObject entry = it.value().toObject();
        const QJsonValue type = entry.value(QStringLiteral("type"));
        QString reason;
        boost::any value;
        if (!it.value().isObject() || !type.isString() || !entry.contains(QStringLiteral("value")))
            reason = QStringLiteral("expected {\"type\": ..., \"value\": ...}");
        else
            readValue(type.toString(), entry.value(QStringLiteral("value")), value, &reason);
        if (!reason.isEmpty())
            return failWith(QStringLiteral("the value of \"%1\" is not valid: %2").arg(it.key(), reason));
        loaded.set(it.key().toStdString(), value, true);
    }
    for (const auto &entry : loaded.values())
        store.set(entry.first, entry.second, true);
    return true;
}

namespace {

template <class F>
bool sameFloating(F a, F b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool sameColor(const osg::Color3f &a, const osg::Color3f &b)
{
    return sameFloating(a.red(), b.red()) && sameFloating(a.green(), b.green()) && sameFloating(a.blue(), b.blue());
}

template <class T, class Same>
bool sameList(const std::vector<T> &a, const std::vector<T> &b, Same same)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!same(a[i], b[i]))
            return false;
    return true;
}

// Floating values are the same when their bits are; other values when equal.
bool sameHeld(float a, float b) { return sameFloating(a, b); }
bool sameHeld(double a, double b) { return sameFloating(a, b); }
bool sameHeld(const osg::Color3f &a, const osg::Color3f &b) { return sameColor(a, b); }
bool sameHeld(const Floats &a, const Floats &b) { return sameList(a, b, sameFloating<float>); }
bool sameHeld(const Colors &a, const Colors &b) { return sameList(a, b, sameColor); }
template <class T>
bool sameHeld(const T &a, const T &b)
{
    return a == b;
}

} // namespace

bool sameValue(const boost::any &a, const boost::any &b)
{
    if (a.empty() || b.empty())
        return a.empty() && b.empty();
    if (std::strcmp(a.type().name(), b.type().name()) != 0)
        return false;
    bool same = false;
    lmVisitValue(a, [&b, &same](const auto &v) { same = sameHeld(v, *held<std::decay_t<decltype(v)>>(b)); });
    return same;
}

} // namespace lmStoreDocument

// --- lmStoreFile -------------------------------------------------------------

lmStoreFile::lmStoreFile(const QString &path) : m_path(path) {}

bool lmStoreFile::readFile(const QString &path, lmMessage &store, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QFileInfo(path).isDir() ? QStringLiteral("it is a folder") : file.errorString();
        return false;
    }
    const QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return lmStoreDocument::read(data, store, error);
}

lmStoreFile::LoadResult lmStoreFile::load(lmMessage &store)
{
    m_messages.clear();
    m_loadError.clear();
    if (m_path.isEmpty())
        return NoFile;
    if (!QFileInfo::exists(m_path)) {
        m_messages << QStringLiteral("No preferences file %1 yet: starting from the defaults.").arg(m_path);
        return NoFile;
    }
    QString reason;
    if (readFile(m_path, store, &reason))
        return Loaded;

    m_loadError = reason;
    m_messages << QStringLiteral("Cannot load the preferences %1: %2. The file is left as it is.").arg(m_path, reason);
    if (QFileInfo::exists(backupPath())) {
        QString backupReason;
        if (readFile(backupPath(), store, &backupReason)) {
            m_messages << QStringLiteral("Starting from the backup %1.").arg(backupPath());
            return LoadedFromBackup;
        }
        m_messages << QStringLiteral("The backup %1 cannot be loaded either: %2.").arg(backupPath(), backupReason);
    }
    m_messages << QStringLiteral("Starting from the defaults.");
    return Failed;
}

bool lmStoreFile::fail(const QString &reason)
{
    m_error = QStringLiteral("The preferences were not saved to %1: %2.").arg(m_path, reason);
    return false;
}

bool lmStoreFile::save(const lmMessage &store)
{
    return write(store, nullptr, nullptr);
}

bool lmStoreFile::saveChanges(const lmMessage &store, const lmMessage &base, lmMessage &merged)
{
    return write(store, &base, &merged);
}

bool lmStoreFile::setDamagedFileAside(QString *keptAs)
{
    m_error.clear();
    QString aside = m_path + QStringLiteral(".damaged");
    for (int n = 2; QFileInfo::exists(aside); ++n)
        aside = m_path + QStringLiteral(".damaged-%1").arg(n);
    if (QFileInfo::exists(m_path) && !QFile::rename(m_path, aside)) {
        m_error = QStringLiteral("The damaged preferences %1 could not be moved to %2.").arg(m_path, aside);
        return false;
    }
    m_loadError.clear();
    if (keptAs)
        *keptAs = aside;
    return true;
}

namespace {

// The file as it is on disk, with the keys this instance changed on top.
lmMessage mergedOnto(const lmMessage &disk, const lmMessage &store, const lmMessage &base)
{
    lmMessage merged = disk;
    for (const auto &entry : store.values())
        if (!disk.contains(entry.first) || !lmStoreDocument::sameValue(entry.second, base.get(entry.first)))
            merged.set(entry.first, entry.second, true);
    // A key this instance dropped goes unless another changed it meanwhile.
    for (const auto &entry : base.values())
        if (!store.contains(entry.first) && lmStoreDocument::sameValue(disk.get(entry.first), entry.second))
            merged.remove(entry.first);
    return merged;
}

} // namespace

bool lmStoreFile::write(const lmMessage &store, const lmMessage *base, lmMessage *merged)
{
    m_error.clear();
    m_messages.clear();
    if (m_path.isEmpty()) {
        if (merged)
            *merged = store;
        return true;
    }
    if (!m_loadError.isEmpty())
        return fail(QStringLiteral("the file could not be loaded (%1) and is left as it is").arg(m_loadError));

    const QFileInfo info(m_path);
    if (info.isDir())
        return fail(QStringLiteral("it is a folder"));
    const QString folder = info.absolutePath();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));

    // One writer at a time: another instance saving the same file waits here,
    // and what it wrote is read below before anything is written.
    QLockFile lock(m_path + QStringLiteral(".lock"));
    qint64 pid = 0;
    QString host, application;
    bool locked = lock.tryLock(m_lockTimeout);
    // A writer says who it is as soon as it has created the lock file. One
    // that still says nothing after the whole wait was left by a process
    // killed while creating it, and would otherwise count as held until it
    // is half a minute old.
    if (!locked && lock.error() == QLockFile::LockFailedError && !lock.getLockInfo(&pid, &host, &application))
        locked = lock.removeStaleLockFile() && lock.tryLock(m_lockTimeout);
    if (!locked) {
        if (lock.error() == QLockFile::LockFailedError && lock.getLockInfo(&pid, &host, &application))
            return fail(QStringLiteral("another instance (process %1) holds the lock %2.lock").arg(pid).arg(m_path));
        return fail(QStringLiteral("cannot create the lock file %1.lock").arg(m_path));
    }

    QByteArray previous;
    lmMessage disk;
    bool diskGood = false;
    QFile current(m_path);
    if (current.exists()) {
        QString reason;
        if (current.open(QIODevice::ReadOnly)) {
            previous = current.readAll();
            current.close();
            diskGood = lmStoreDocument::read(previous, disk, &reason);
        } else {
            reason = current.errorString();
        }
        // Changed by someone else into something unreadable since it was
        // loaded: the same as a file that failed to load.
        if (!diskGood && base) {
            m_loadError = reason;
            return fail(QStringLiteral("the file on disk cannot be read (%1) and is left as it is").arg(reason));
        }
    }

    const lmMessage result = base ? mergedOnto(disk, store, *base) : store;

    // The file being replaced becomes the backup when it is good.
    if (diskGood) {
        QSaveFile backup(backupPath());
        if (!backup.open(QIODevice::WriteOnly) || backup.write(previous) != previous.size() || !backup.commit())
            return fail(QStringLiteral("cannot write the backup %1 (%2)").arg(backupPath(), backup.errorString()));
    }

    QStringList skipped;
    const QByteArray document = lmStoreDocument::write(result, &skipped);
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size() || !file.commit())
        return fail(file.errorString());
    if (!skipped.isEmpty())
        m_messages << QStringLiteral("Keys of no preference type were not saved: %1.").arg(skipped.join(QStringLiteral(", ")));
    if (merged)
        *merged = result;
    return true;
}
