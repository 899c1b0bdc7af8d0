#include "lmDialogSuppressor.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <cstdio>

lmDialogSuppressor::lmDialogSuppressor(bool report) : m_report(report)
{
    if (qApp)
        qApp->installEventFilter(this);
}

lmDialogSuppressor::~lmDialogSuppressor()
{
    if (qApp)
        qApp->removeEventFilter(this);
}

namespace {

bool isUserInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

} // namespace

bool lmDialogSuppressor::eventFilter(QObject *watched, QEvent *event)
{
    // A click that reached the host's dialog while a dismissed dialog's event
    // loop runs would act on whatever store is current.
    if (isUserInput(event->type()))
        return true;
    if (event->type() != QEvent::Show || !watched->isWidgetType())
        return false;
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (!dialog)
        return false;
    if (m_report) {
        const auto *box = qobject_cast<QMessageBox *>(dialog);
        std::fprintf(stderr, "lmprefs-host: dismissed the dialog \"%s\"%s%s\n", qPrintable(dialog->windowTitle()),
                     box ? ": " : "", box ? qPrintable(box->text().replace(QLatin1Char('\n'), QLatin1Char(' '))) : "");
    }
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
    // exec() starts its event loop after show(): reject from inside it.
    QPointer<QDialog> guard(dialog);
    QTimer::singleShot(0, dialog, [guard] {
        if (guard)
            guard->reject();
    });
    return true;
}
