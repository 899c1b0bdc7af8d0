// What Qt's lupdate collects from the plug-in's sources and forms: the texts
// a translator must see, each in the context the code translates it in.
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

using Message = QPair<QString, QString>; // context, source text

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QSet<Message> m_messages;
    QString m_lupdateOutput;

private slots:
    void initTestCase()
    {
        const QString ts = m_dir.filePath(QStringLiteral("lmKernelPreferences.ts"));
        QProcess lupdate;
        lupdate.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // its messages in English
        lupdate.setProcessEnvironment(environment);
        lupdate.start(QStringLiteral(LM_LUPDATE), {QStringLiteral("-locations"), QStringLiteral("none"),
                                                   QStringLiteral("@" LM_TRANSLATABLE_LIST), QStringLiteral("-ts"), ts});
        QVERIFY(lupdate.waitForFinished(-1));
        m_lupdateOutput = QString::fromLocal8Bit(lupdate.readAll());
        QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0, qPrintable(m_lupdateOutput));

        QFile file(ts);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString context;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == QLatin1String("context"))
                context.clear();
            else if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else if (xml.name() == QLatin1String("source"))
                m_messages.insert({context, xml.readElementText()});
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }

    // lupdate read every file without a complaint (an unknown class or
    // namespace, a bad escape, ...).
    void lupdateHasNothingToSay()
    {
        for (const QString &line : m_lupdateOutput.split('\n', Qt::SkipEmptyParts))
            QVERIFY2(line.startsWith(QLatin1String("Updating ")) || line.trimmed().startsWith(QLatin1String("Found ")),
                     qPrintable(line));
    }

    // Every text belongs to a category, a form or the application's
    // "lmPreferences", not to QObject or to no context; and the format pages
    // are named as they are in every language, so the code does not pass
    // their names through a translation (forms may name a format in a label).
    void everyTextHasThePlugInsContext()
    {
        for (const Message &message : qAsConst(m_messages)) {
            QVERIFY2(message.first.startsWith(QLatin1String("lm")), qPrintable(message.first + ": " + message.second));
            if (message.first.endsWith(QLatin1String("GUII")) || message.first == QLatin1String("lmPreferences"))
                for (const char *name : {"Catia V4", "OSB / VPB", "ProE / Creo", "WRL", "Kova", "Base CAD"})
                    QVERIFY2(message.second != QLatin1String(name), qPrintable(message.first + ": " + message.second));
        }
    }

    // Message boxes and titles, page names (the category's own context and
    // the application's), forms (labels, frames, tool tips), combo items
    // filled by code.
    void textsArePresent()
    {
        const QList<Message> expected = {
            {"lmMainWindowPreferencesGUII", "Please restart LUMO so that your language changes can take effect."},
            {"lmTesselationPreferencesGUII", "Only positive non zero values are allowed!"},
            {"lmFileIOPreferencesGUII", "Path already inserted!"},
            {"lmWebInterfacePreferencesGUII", "Enable Web Server"},
            {"lmCameraPreferencesGUII", "Camera"},
            {"lmRenderOptionsPreferencesGUII", "Render Options"},
            {"lmVirtualRealityPreferencesGUII", "Virtual Reality"},
            {"lmPreferences", "FileIO"},
            {"lmMainWindowPreferencesGUI", "Window Opacity"},
            {"lmOsbPreferencesGUI", "This can be quite slow on network drives"},
            {"lmFileIOPreferencesGUI", "Texture Search Paths"},
            {"lmFileTypePreferencesGUI", "Import Invisible Instances"},
            {"lmKovaPreferencesGUII", "Millimeter"},
            {"lmRenderOptionsPreferencesGUII", "%1 Samples"},
        };
        for (const Message &message : expected)
            QVERIFY2(m_messages.contains(message), qPrintable(message.first + ": " + message.second));
    }

    // The preference keys the forms bind their controls to are names, not
    // texts: marked untranslatable.
    void preferenceKeysAreNotOffered()
    {
        QFile list(QStringLiteral(LM_TRANSLATABLE_LIST));
        QVERIFY(list.open(QIODevice::ReadOnly));
        int keys = 0;
        for (const QByteArray &line : list.readAll().split('\n')) {
            if (!line.endsWith(".ui"))
                continue;
            QFile form(QString::fromLocal8Bit(line));
            QVERIFY(form.open(QIODevice::ReadOnly));
            QXmlStreamReader xml(&form);
            bool inKey = false;
            while (!xml.atEnd()) {
                xml.readNext();
                if (xml.isStartElement() && xml.name() == QLatin1String("property"))
                    inKey = xml.attributes().value("name") == QLatin1String("lmPreferenceKey");
                if (!inKey || !xml.isStartElement())
                    continue;
                // A key may read like a label ("Help Location"): the mark is what counts.
                if (xml.name() == QLatin1String("stringlist") || xml.name() == QLatin1String("string")) {
                    QVERIFY2(xml.attributes().value("notr") == QLatin1String("true"),
                             qPrintable(form.fileName() + ": line " + QString::number(xml.lineNumber())));
                    ++keys;
                    inKey = false;
                }
            }
            QVERIFY2(!xml.hasError(), qPrintable(form.fileName() + ": " + xml.errorString()));
        }
        QVERIFY(keys > 0); // the forms still name the keys of the controls their pages handle by hand
    }

};

QTEST_GUILESS_MAIN(tst_Translations)
#include "tst_translations.moc"
