#pragma once

#include "lmMessage.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <boost/any.hpp>

#include <string>

class QJsonValue;

// The store as a JSON document:
//   {"format": "lmKernelPreferences-store", "version": 1,
//    "values": {"Camera fov": {"type": "float", "value": 45}, ...}}
// Every value keeps its type and its bits: floating values are written as
// their shortest round-trip text ("nan", "inf", "-inf" and "-0" as strings),
// 8-bit strings that are not UTF-8 as {"base64": "..."}, QStrings with lone
// surrogates as \u escapes.
namespace lmStoreDocument {

extern const char *const kFormat;
constexpr int kVersion = 1;

// The type name used in the document ("int", "float", "colors", ...), or an
// empty string for a value of no preference type.
QString typeName(const boost::any &value);

// The whole document. Keys that cannot be written (a value of no preference
// type, a key that is not UTF-8) are left out and named in skipped.
QByteArray write(const lmMessage &store, QStringList *skipped = nullptr);

// Reads a document; all or nothing: on failure store is untouched and error
// says why (with the byte offset or the key at fault).
bool read(const QByteArray &data, lmMessage &store, QString *error);

// One value as compact JSON text, as it appears under "value".
std::string valueJson(const boost::any &value);

// One value of the named type from its JSON form.
bool readValue(const QString &type, const QJsonValue &json, boost::any &out, QString *error);

// Same type and the same bits (NaN equals NaN, 0 differs from -0).
bool sameValue(const boost::any &a, const boost::any &b);

// The float whose shortest text reads as this double; for other doubles the
// nearest float. Reading a float through a double could otherwise round twice.
float floatFromJsonNumber(double number);

} // namespace lmStoreDocument

// The file that keeps the store between runs: written atomically under a lock,
// the previous good file kept as FILE.bak, and a file that failed to load is
// never overwritten without the user's consent.
//
// Two instances on one file: saveChanges() writes only the keys this
// instance changed onto the file as it is on disk at that moment, under the
// lock, and keeps every other key from the disk. When both changed the same
// key, the later save wins for that key.
class lmStoreFile
{
public:
    enum LoadResult { NoFile, Loaded, LoadedFromBackup, Failed };

    // An empty path keeps nothing: loads find no file and saves succeed.
    explicit lmStoreFile(const QString &path = QString());

    QString path() const { return m_path; }
    QString backupPath() const { return m_path + QStringLiteral(".bak"); }

    // Merges the file (or, when that cannot be read, its backup) into store.
    // What happened is told in messages(), one line each.
    LoadResult load(lmMessage &store);
    // Writes the whole store; false when it was not saved (errorString()).
    bool save(const lmMessage &store);
    // Writes the keys whose values in store differ from base (or that the
    // disk lacks) onto the file as it is now; the rest keeps the disk's
    // values. merged receives what the file then holds.
    bool saveChanges(const lmMessage &store, const lmMessage &base, lmMessage &merged);

    // False while the file on disk could not be read: saves leave it alone.
    bool canSave() const { return m_loadError.isEmpty(); }
    QString damageReason() const { return m_loadError; }
    // With the user's consent: moves the unreadable file aside (to a free
    // FILE.damaged name, returned in keptAs), so that the next save writes a
    // new one. False when it could not be moved (errorString()).
    bool setDamagedFileAside(QString *keptAs = nullptr);

    QStringList messages() const { return m_messages; }
    QString errorString() const { return m_error; }

    // How long a save waits for another instance's lock.
    void setLockTimeout(int milliseconds) { m_lockTimeout = milliseconds; }

    // Reads one file into store; false with the reason (path not included).
    static bool readFile(const QString &path, lmMessage &store, QString *error);

private:
    bool write(const lmMessage &store, const lmMessage *base, lmMessage *merged);
    bool fail(const QString &reason);

    QString m_path;
    QString m_loadError;
    QString m_error;
    QStringList m_messages;
    int m_lockTimeout = 5000;
};
