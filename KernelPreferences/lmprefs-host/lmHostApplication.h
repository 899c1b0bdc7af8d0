#pragma once

#include "lmDialogSuppressor.h"

#include <QLibrary>
#include <QString>
#include <QStringList>

#include <memory>

class QFile;
class lmPreferencesDialog;
class lmPreferencesSession;

// lmprefs-host: loads the preferences plug-in as the host does, persists the
// store, and either opens the preferences dialog or, headless, runs the
// actions given on the command line.
class lmHostApplication
{
public:
    lmHostApplication();
    ~lmHostApplication();

    // Before the QApplication exists: a run without a window, or on a machine
    // without a display, uses the offscreen platform.
    static void preparePlatform(int argc, char **argv);
    // Qt's application object takes "--plugin" for itself: takes ours out of
    // argv first, to be handed back to run() with the other arguments.
    static QStringList takeOwnArguments(int &argc, char **argv);

    // The exit status: 0 on success, 2 on bad arguments or input, 1 on any
    // other failure (with a one-line message on stderr).
    int run(const QStringList &arguments);

    // The store file used when --preferences is not given.
    static QString defaultStorePath();
    // "FileIO_OSB - VPB" for the page "OSB / VPB" of the group "FileIO".
    static QString screenshotName(const QString &group, const QString &page);

private:
    int execute(const QStringList &arguments);
    int fail(int status, const QString &message);
    int loadPlugin(const QString &path, bool given);
    int openTrace(const QString &path);
    int setValues(const QStringList &assignments);
    void printDifferences();
    int writeScreenshots(const QString &folder);
    lmPreferencesDialog &dialog();
    void shutDown();

    std::unique_ptr<lmDialogSuppressor> m_dialogSuppressor;
    std::unique_ptr<lmPreferencesSession> m_session;
    std::unique_ptr<lmPreferencesDialog> m_dialog;
    std::unique_ptr<QFile> m_trace;
    int m_traceListener = 0;
    int m_errorListener = 0;
    QLibrary m_plugin;
};
