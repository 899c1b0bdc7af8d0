#pragma once

#include <QList>
#include <QString>

class QWidget;

// What the host knows of a page's controls: which of them hold preference
// keys, what a person reads beside each, and whether a person can reach it.
namespace lmSettingControls {

// Text as a person reads it: rich text as plain text, mnemonics ("&Apply")
// without their marker, blanks simplified.
QString plainText(const QString &text);

enum class Hidden { ForGood, OrOnAnotherTab };
// Hidden on its page (by an edition rule, a format that does not use it, a
// tab taken out) rather than out of sight inside a collapsed frame or, with
// ForGood, on another tab; the page itself need not be shown.
bool isHidden(const QWidget *widget, const QWidget *page, Hidden how = Hidden::ForGood);

// The controls of a page that hold preference keys and that a person can
// reach, in the order they were built.
QList<QWidget *> boundControls(const QWidget *page);

// The widget whose text names a control: a button's or check box's own
// text, a group box's title; else the label whose buddy it is, else the
// label just before it in its layout (same grid row, form row or box); else
// the group box or collapsible frame that holds it. Null when none.
QWidget *labelWidgetOf(const QWidget *control);
// That widget's text.
QString labelOf(const QWidget *control);

// Brings a control into sight on its page: the tabs that hold it become
// current, the collapsed frames around it open.
void reveal(QWidget *control, const QWidget *page);

} // namespace lmSettingControls
