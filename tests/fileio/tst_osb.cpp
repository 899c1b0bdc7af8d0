// The OSB / VPB page: edition defaults, compression mappings in both
// directions, checksum rules, the "osb" option string, migration of the
// retired texture keys and the import behaviour of both native formats.
#include "fileio/lmOsbPreferencesGUI.h"
#include "OpenSG/OSGSceneFileHandler.h"
#include "OpenSGFileIO.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmImportOptions.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

template <class T>
bool holds(const std::string &key, const T &expected)
{
    const boost::any &value = lmPreferences::getData().get(key);
    return !value.empty() && lmHoldsType(value, typeid(T)) && *boost::unsafe_any_cast<T>(&value) == expected;
}

void set(const char *key, const boost::any &value)
{
    lmPreferences::getData().set(key, value, true);
}

// An import-options commit reduced to what this page sets, so the check does
// not depend on the record's other fields.
QStringList callLog()
{
    static const QRegularExpression write(
        R"(^lmImportOptions::write\(("\w+"), .*, smartReferenceBehavior=(\d+), importAsSmartReference=(\w+), .*\)$)");
    QStringList lines = lmCallLog::lines();
    for (QString &line : lines) {
        const QRegularExpressionMatch match = write.match(line);
        if (match.hasMatch())
            line = QStringLiteral("write(%1, %2, %3)").arg(match.captured(1), match.captured(2), match.captured(3));
    }
    return lines;
}

QString osbOptions(const QString &textures)
{
    return QStringLiteral("osg::SceneFileHandler::setOptions(\"osb\", \"packIndices=false,unpack16BitIndices=true,%1\")")
        .arg(textures);
}

} // namespace

class tst_Osb : public QObject
{
    Q_OBJECT

private:
    void start(lmOsbPreferencesGUII &osb)
    {
        osb.setDefault(lmPreferences::getData(), false);
        osb.updateGUI();
        lmCallLog::clear();
    }

    // Store and apply, as the accepted dialog does; the compression call only.
    QString compressionPushedAfterStore(lmOsbPreferencesGUII &osb)
    {
        osb.storeGUI();
        lmCallLog::clear();
        osb.apply();
        return lmCallLog::lines().value(0);
    }

private slots:
    void init() { lmResetHost(); }

    void defaultsAndTheirApply()
    {
        lmOsbPreferencesGUII osb;
        osb.setDefault(lmPreferences::getData(), true);
        QVERIFY(holds("OsbFileIO position res", 0));
        QVERIFY(holds("OsbFileIO pack indices", true));
        QVERIFY(holds("OsbFileIO unpack 16 bit indices", true));
        QVERIFY(holds("OsbFileIO inline textures", true));
        QVERIFY(holds("OsbFileIO texture compression type", 0));
        QVERIFY(holds("OsbFileIO compress quality", 85));
        QVERIFY(holds("OsbFileIO force compression", true));
        QVERIFY(holds("OsbFileIO compression type", 2));
        QVERIFY(holds("OsbFileIO old format", false));
        QVERIFY(holds("OsbFileIO reader crc test", false));
        QVERIFY(holds("OsbFileIO writer crc test", false));
        QVERIFY(holds("VpbFileIO show calc vset previews dialog", true));
        QVERIFY(holds("VpbFileIO Maximal number of increments", 5u));
        QVERIFY(holds("LUMOOptions import smart reference behavior", 2));
        QVERIFY(holds("OpenSGOptions import smart reference behavior", 2));
        QVERIFY(holds("LUMOOptions import create as smart", false));
        QVERIFY(holds("OpenSGOptions import create as smart", false));
        QCOMPARE(lmPreferences::getData().size(), std::size_t(23));

        osb.updateGUI();
        lmOsbPreferencesGUIW *page = osb.page();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Fast"));
        QCOMPARE(page->_image_type->currentText(), QStringLiteral("None"));
        QCOMPARE(page->_compress_quality->value(), 85);
        QVERIFY(!page->_compress_quality->isEnabled());
        QCOMPARE(page->_incrementLimit->value(), 5);
        QVERIFY(page->_incrementLimit->isEnabled());
        QCOMPARE(page->m_importBehavior->currentText(), QStringLiteral("Keep References"));
        QVERIFY(!page->_crc->isChecked());

        osb.apply();
        QCOMPARE(callLog(), QStringList({
                                "OpenSGFileIO::setCompressionType(2)",
                                "OpenSGFileIO::setNewFormat(true)",
                                "lmFileIO::setReaderCRCTest(false)",
                                "lmFileIO::setWriterCRCTest(false)",
                                osbOptions("inlineTextures=true,compressTextures=false"),
                                "lmFileIO::enableIncrementalSave(true)",
                                "lmFileIO::setIncrementalSaveLimit(5)",
                                "lmFileIO::setExecuteEmbeddedScript(true)",
                                "lmFileIO::setShowPreviewHint(true)",
                                "write(\"LUMO\", 2, false)",
                                "write(\"OpenSG\", 2, false)",
                            }));
        QCOMPARE(QString(osg::SceneFileHandler::the().getOptions("osb")),
                 QStringLiteral("packIndices=false,unpack16BitIndices=true,inlineTextures=true,compressTextures=false"));
        QCOMPARE(lmPreferencesHost::pages()[0].page, QStringLiteral("OSB / VPB"));
    }

    void textureCompressionOptionStrings()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();

        // The user picks "Lossy" from the keyboard: the quality becomes editable.
        page->_image_type->setFocus();
        QTest::keyClick(page->_image_type, Qt::Key_Down);
        QTest::keyClick(page->_image_type, Qt::Key_Down);
        QCOMPARE(page->_image_type->currentText(), QStringLiteral("Lossy"));
        QVERIFY(page->_compress_quality->isEnabled());
        page->_compress_quality->setValue(75);
        osb.storeGUI();
        QVERIFY(holds("OsbFileIO texture compression type", 2));
        QVERIFY(holds("OsbFileIO compress quality", 75));
        osb.apply();
        QCOMPARE(callLog()[4], osbOptions("inlineTextures=true,compressTextures=true,texturesCompressionQuality=75,"
                                          "texturesImageType=jpeg"));

        QTest::keyClick(page->_image_type, Qt::Key_Up);
        QVERIFY(!page->_compress_quality->isEnabled());
        page->_inline_textures->setChecked(false);
        osb.storeGUI();
        lmCallLog::clear();
        osb.apply();
        QCOMPARE(callLog()[4], osbOptions("inlineTextures=false,compressTextures=true,texturesCompressionQuality=75,"
                                          "texturesImageType=png"));

        // Types outside the combo: below 1 is off, above 2 is jpeg.
        set("OsbFileIO texture compression type", -1);
        lmCallLog::clear();
        osb.apply();
        QCOMPARE(callLog()[4], osbOptions("inlineTextures=false,compressTextures=false"));
        set("OsbFileIO texture compression type", 7);
        lmCallLog::clear();
        osb.apply();
        QCOMPARE(callLog()[4], osbOptions("inlineTextures=false,compressTextures=true,texturesCompressionQuality=75,"
                                          "texturesImageType=jpeg"));
    }

    void fileCompressionMapsBothWays()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();

        // Stored 2 (the default) and 1 both show "Fast" and push 2; storing writes 1.
        for (int stored : {2, 1}) {
            set("OsbFileIO compression type", stored);
            page->_compression->setCurrentIndex(0);
            osb.updateGUI();
            QCOMPARE(page->_compression->currentText(), QStringLiteral("Fast"));
            lmCallLog::clear();
            osb.apply();
            QCOMPARE(lmCallLog::lines().value(0), QStringLiteral("OpenSGFileIO::setCompressionType(2)"));
            osb.storeGUI();
            QVERIFY(holds("OsbFileIO compression type", 1));
            QVERIFY(holds("OsbFileIO force compression", false));
        }

        page->_compression->setCurrentIndex(0);
        QCOMPARE(compressionPushedAfterStore(osb), QStringLiteral("OpenSGFileIO::setCompressionType(1)"));
        QVERIFY(holds("OsbFileIO compression type", 0));
        QVERIFY(holds("OsbFileIO force compression", true));
        page->_compression->setCurrentIndex(2);
        QCOMPARE(compressionPushedAfterStore(osb), QStringLiteral("OpenSGFileIO::setCompressionType(4)"));
        QVERIFY(holds("OsbFileIO compression type", 3));
        page->_compression->setCurrentIndex(0);
        osb.updateGUI();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Best"));

        // A type the combo cannot show is pushed mapped and leaves the combo alone.
        set("OsbFileIO compression type", 4);
        osb.updateGUI();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Best"));
        lmCallLog::clear();
        osb.apply();
        QCOMPARE(lmCallLog::lines().value(0), QStringLiteral("OpenSGFileIO::setCompressionType(5)"));
        QCOMPARE(OpenSGFileIO::the().getCompressionType(), 5);
    }

    void essentialsEditionForcesItsChoices()
    {
        lmHostSettings::setEdition(lmHostSettings::Essentials);
        lmOsbPreferencesGUII osb;
        osb.setDefault(lmPreferences::getData(), true);
        QVERIFY(holds("OsbFileIO reader crc test", true));
        QVERIFY(holds("OsbFileIO writer crc test", true));
        lmOsbPreferencesGUIW *page = osb.page();
        QVERIFY(page->_inline_textures_frame->isHidden());
        QVERIFY(page->_validate->isHidden());
        QVERIFY(page->_reader_frame->isHidden());
        QVERIFY(!page->_compression->isHidden());

        set("OsbFileIO compression type", 3);
        set("OsbFileIO inline textures", false);
        set("OsbFileIO reader crc test", false);
        set("OsbFileIO writer crc test", false);
        osb.updateGUI();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Fast"));
        lmCallLog::clear();
        osb.apply();
        const QStringList lines = callLog();
        QCOMPARE(lines.mid(0, 5), QStringList({
                                      "OpenSGFileIO::setCompressionType(2)",
                                      "OpenSGFileIO::setNewFormat(true)",
                                      "lmFileIO::setReaderCRCTest(true)",
                                      "lmFileIO::setWriterCRCTest(true)",
                                      osbOptions("inlineTextures=true,compressTextures=false"),
                                  }));

        page->_compression->setCurrentIndex(2);
        page->_crc->setChecked(false);
        page->_validate->setChecked(false);
        osb.storeGUI();
        QVERIFY(holds("OsbFileIO compression type", 1));
        QVERIFY(holds("OsbFileIO force compression", false));
        QVERIFY(holds("OsbFileIO reader crc test", true));
        QVERIFY(holds("OsbFileIO writer crc test", true));
    }

    void checksumTestsAndWriterSettings()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();
        page->_crc->setChecked(true);
        page->_old_format->setChecked(true);
        page->_incrementalSave->setChecked(false);
        QVERIFY(!page->_incrementLimit->isEnabled());
        page->_incrementLimit->setValue(0);
        QCOMPARE(page->_incrementLimit->text(), QStringLiteral("Unlimited"));
        page->_execute_script->setChecked(false);
        osb.storeGUI();
        QVERIFY(holds("VpbFileIO Maximal number of increments", 0u));
        lmCallLog::clear();
        osb.apply();
        QStringList lines = callLog();
        QCOMPARE(lines.mid(1, 3), QStringList({"OpenSGFileIO::setNewFormat(false)", "lmFileIO::setReaderCRCTest(true)",
                                               "lmFileIO::setWriterCRCTest(false)"}));
        QCOMPARE(lines.mid(5, 3), QStringList({"lmFileIO::enableIncrementalSave(false)",
                                               "lmFileIO::setIncrementalSaveLimit(0)",
                                               "lmFileIO::setExecuteEmbeddedScript(false)"}));

        // A missing writer key takes the reader's value; missing switches are skipped.
        lmPreferences::getData().remove("OsbFileIO writer crc test");
        lmPreferences::getData().remove("VpbFileIO Incremental save enabled");
        lmCallLog::clear();
        osb.apply();
        lines = callLog();
        QCOMPARE(lines[3], QStringLiteral("lmFileIO::setWriterCRCTest(true)"));
        QVERIFY(!lines.join('\n').contains("enableIncrementalSave"));
    }

    void retiredTextureKeysMigrateOnce()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmMessage &store = lmPreferences::getData();
        const struct
        {
            bool compress;
            const char *imageType;
            const char *shown;
        } cases[] = {{false, "png", "None"}, {true, "png", "Lossless"}, {true, "PNG", "Lossy"}, {true, "jpeg", "Lossy"}};
        for (const auto &c : cases) {
            set("OsbFileIO compress textures", c.compress);
            set("OsbFileIO textures image type", std::string(c.imageType));
            set("OsbFileIO texture compression type", 0);
            osb.updateGUI();
            QCOMPARE(osb.page()->_image_type->currentText(), QString(c.shown));
            QVERIFY(!store.contains("OsbFileIO compress textures"));
            QVERIFY(!store.contains("OsbFileIO textures image type"));
            osb.storeGUI();
            QVERIFY(holds("OsbFileIO texture compression type", osb.page()->_image_type->currentIndex()));
        }

        // One retired key alone is not migrated and stays.
        set("OsbFileIO compress textures", true);
        set("OsbFileIO texture compression type", 1);
        osb.updateGUI();
        QCOMPARE(osb.page()->_image_type->currentText(), QStringLiteral("Lossless"));
        QVERIFY(store.contains("OsbFileIO compress textures"));
    }

    void importBehaviourFollowsTheLUMOKeys()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();
        set("LUMOOptions import smart reference behavior", 5);
        set("LUMOOptions import create as smart", true);
        set("OpenSGOptions import smart reference behavior", 2);
        set("OpenSGOptions import create as smart", false);
        osb.updateGUI();
        osb.updateGUI();
        QCOMPARE(page->m_importBehavior->count(), 2);
        QCOMPARE(page->m_importBehavior->currentText(), QStringLiteral("Remove References"));
        QVERIFY(page->m_importAsSmart->isChecked());
        osb.apply();
        QCOMPARE(callLog().mid(9), QStringList({"write(\"LUMO\", 3, true)", "write(\"OpenSG\", 3, true)"}));
        lmImportOptions record("", false, false);
        QVERIFY(lmImportOptions::lastWritten("OpenSG", record));
        QCOMPARE(record.getSmartReferenceBehavior(), lmImportOptions::RemoveReferences);

        page->m_importBehavior->setCurrentIndex(0);
        page->m_importAsSmart->setChecked(false);
        osb.storeGUI();
        for (const char *key : {"LUMOOptions import smart reference behavior", "OpenSGOptions import smart reference behavior"})
            QVERIFY2(holds(key, 2), key);
        for (const char *key : {"LUMOOptions import create as smart", "OpenSGOptions import create as smart"})
            QVERIFY2(holds(key, false), key);
    }

    void wrongTypesAreReportedAndSkipped()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        set("OsbFileIO pack indices", 1);                   // read, never used
        set("OsbFileIO compression type", std::string("3")); // falls back to 2
        set("VpbFileIO Maximal number of increments", 5);    // int, not unsigned
        osb.page()->_incrementLimit->setValue(9);
        lmStderrCapture capture;
        osb.updateGUI();
        osb.apply();
        const QString printed = capture.text();
        QCOMPARE(printed.count("Attribute 'OsbFileIO pack indices' has wrong type"), 1);
        QCOMPARE(printed.count("Attribute 'OsbFileIO compression type' has wrong type"), 2);
        QCOMPARE(osb.page()->_incrementLimit->value(), 9);
        const QStringList lines = callLog();
        QCOMPARE(lines[0], QStringLiteral("OpenSGFileIO::setCompressionType(2)"));
        QVERIFY(!lines.join('\n').contains("setIncrementalSaveLimit"));
    }

    void destructionRemovesEveryKey()
    {
        {
            lmOsbPreferencesGUII osb;
            start(osb);
            set("OsbFileIO compress textures", true);
        }
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QVERIFY(lmPreferencesHost::pages().empty());
    }
};

QTEST_MAIN(tst_Osb)
#include "tst_osb.moc"
