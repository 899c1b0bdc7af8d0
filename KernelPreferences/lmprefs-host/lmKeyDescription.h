#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class lmPreferencesSession;

// Every preference key with the control a person sets it with, as
// "lmprefs-host --describe" prints it.
namespace lmKeyDescription {

struct Row
{
    QString page;         // "group/page", or "group" for a top-level page
    QString label;        // what a person reads at the control; empty: no control
    QString key;
    QString type;         // the store document's type name; empty: no default
    QString defaultValue; // as --set takes it; empty when there is no default
    QStringList items;    // a combo box's item texts
    bool hasRange = false;
    double minimum = 0.0; // a spin box's or slider's range
    double maximum = 0.0;
};

// The keys of every page in dialog order, then those of categories without
// a page in creation order. Within a page: the keys of its controls in the
// order the controls were built, then its keys without a control by name.
// A key that several categories write is listed once: on the page whose
// control holds it, else with the first category that writes it. A control
// hidden on its page (by the edition, by a format that does not use it, or
// by the page's state, such as the help path while help comes from the
// network) counts as none.
std::vector<Row> describe(lmPreferencesSession &session);

QString markdown(const std::vector<Row> &rows);
QByteArray json(const std::vector<Row> &rows);

} // namespace lmKeyDescription
