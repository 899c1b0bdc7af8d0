#include "lmTestSupport.h"

#include "lmHostSettings.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <iostream>
#include <unistd.h>

lmStderrCapture::lmStderrCapture()
{
    m_path = QDir::temp().filePath(QStringLiteral("lm-stderr-%1-%2.txt")
                                       .arg(QCoreApplication::applicationPid())
                                       .arg(reinterpret_cast<quintptr>(this)));
    std::fflush(stderr);
    std::cerr.flush();
    m_savedFd = dup(STDERR_FILENO);
    FILE *file = std::fopen(m_path.toLocal8Bit().constData(), "w+");
    m_fileFd = dup(fileno(file));
    std::fclose(file);
    dup2(m_fileFd, STDERR_FILENO);
}

lmStderrCapture::~lmStderrCapture()
{
    stop();
}

void lmStderrCapture::stop()
{
    if (m_stopped)
        return;
    m_stopped = true;
    std::fflush(stderr);
    std::cerr.flush();
    dup2(m_savedFd, STDERR_FILENO);
    close(m_savedFd);
    close(m_fileFd);
    QFile file(m_path);
    if (file.open(QIODevice::ReadOnly))
        m_text = QString::fromLocal8Bit(file.readAll());
    file.remove();
}

QString lmStderrCapture::text()
{
    stop();
    return m_text;
}

lmDialogAnswerer::lmDialogAnswerer(std::vector<Answer> answers) : m_answers(std::move(answers))
{
    qApp->installEventFilter(this);
}

lmDialogAnswerer::~lmDialogAnswerer()
{
    qApp->removeEventFilter(this);
}

bool lmDialogAnswerer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show || !watched->isWidgetType())
        return false;
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (!dialog || !dialog->isModal())
        return false;

    Seen seen;
    seen.className = QString::fromLatin1(dialog->metaObject()->className());
    seen.title = dialog->windowTitle();
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        seen.text = box->text();
        seen.informativeText = box->informativeText();
        for (QAbstractButton *button : box->buttons())
            seen.buttons << button->text();
    }
    const std::size_t index = m_seen.size();
    m_seen.push_back(seen);
    Answer answer = index < m_answers.size() ? m_answers[index] : reject();

    QPointer<QDialog> guard(dialog);
    QTimer::singleShot(0, dialog, [guard, answer] {
        if (guard)
            answer(guard);
    });
    return false;
}

lmDialogAnswerer::Answer lmDialogAnswerer::accept()
{
    return [](QDialog *dialog) { dialog->accept(); };
}

lmDialogAnswerer::Answer lmDialogAnswerer::reject()
{
    return [](QDialog *dialog) { dialog->reject(); };
}

lmDialogAnswerer::Answer lmDialogAnswerer::clickButton(const QString &text)
{
    return [text](QDialog *dialog) {
        if (auto *box = qobject_cast<QMessageBox *>(dialog))
            for (QAbstractButton *button : box->buttons())
                if (button->text() == text) {
                    button->click();
                    return;
                }
        dialog->reject();
    };
}

lmDialogAnswerer::Answer lmDialogAnswerer::chooseDirectory(const QString &path)
{
    return [path](QDialog *dialog) {
        if (auto *fileDialog = qobject_cast<QFileDialog *>(dialog)) {
            fileDialog->setDirectory(path);
            fileDialog->selectFile(path);
            QMetaObject::invokeMethod(fileDialog, "accept");
            return;
        }
        dialog->reject();
    };
}

lmDialogAnswerer::Answer lmDialogAnswerer::chooseFile(const QString &path)
{
    return [path](QDialog *dialog) {
        if (auto *fileDialog = qobject_cast<QFileDialog *>(dialog)) {
            fileDialog->setDirectory(QFileInfo(path).absolutePath());
            fileDialog->selectFile(QFileInfo(path).fileName());
            QMetaObject::invokeMethod(fileDialog, "accept");
            return;
        }
        dialog->reject();
    };
}

void lmResetHost()
{
    lmHostSettings::resetHost();
}

bool lmRunPluginEntry(QLibrary &library, const QString &path)
{
    library.setFileName(path);
    auto initPreferencesPlugin = reinterpret_cast<void (*)()>(library.resolve("initPreferencesPlugin"));
    if (!initPreferencesPlugin)
        return false;
    initPreferencesPlugin();
    return true;
}
