#pragma once

#include "lmMessageHelpers.h"
#include "lmPreferences.h"

#include <QDialog>
#include <QLibrary>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

// Captures what is written to stderr (both stdio and iostreams) while alive.
class lmStderrCapture
{
public:
    lmStderrCapture();
    ~lmStderrCapture();

    // Stops capturing (once) and returns everything captured.
    QString text();

private:
    void stop();

    int m_savedFd = -1;
    int m_fileFd = -1;
    QString m_path;
    QString m_text;
    bool m_stopped = false;
};

// Answers modal dialogs from the event loop, so that code blocked in exec()
// (message boxes, directory choosers, colour dialogs) returns without a person.
// Answers are used in order; a dialog beyond them is rejected and recorded.
class lmDialogAnswerer : public QObject
{
public:
    using Answer = std::function<void(QDialog *dialog)>;

    struct Seen
    {
        QString className;
        QString title;
        QString text;            // message boxes
        QString informativeText; // message boxes
        QStringList buttons;     // message boxes
    };

    explicit lmDialogAnswerer(std::vector<Answer> answers = {});
    ~lmDialogAnswerer() override;

    // Answers the next dialog beyond those already given answers.
    void add(Answer answer) { m_answers.push_back(std::move(answer)); }

    const std::vector<Seen> &seen() const { return m_seen; }
    int count() const { return int(m_seen.size()); }

    static Answer accept();
    static Answer reject();
    // Clicks the message-box button with this text.
    static Answer clickButton(const QString &text);
    // Chooses a directory in a file dialog and accepts it.
    static Answer chooseDirectory(const QString &path);
    // Names a file in a file dialog and accepts it.
    static Answer chooseFile(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::vector<Answer> m_answers;
    std::vector<Seen> m_seen;
};

// The value stored under key; a missing key or another type ends the test
// run, since every assertion after it would be meaningless.
template <class T>
T lmStored(const char *key)
{
    const boost::any &value = lmPreferences::getData().get(key);
    if (!lmHoldsType(value, typeid(T)))
        qFatal("%s does not hold the expected type", key);
    return *boost::unsafe_any_cast<T>(&value);
}

// Starts every test function from a freshly started stand-in host.
void lmResetHost();

// Loads the plug-in module at path into library and runs its entry point,
// as the host does; false when the entry point is not found.
bool lmRunPluginEntry(QLibrary &library, const QString &path);
