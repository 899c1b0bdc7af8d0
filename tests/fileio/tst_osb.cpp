// The OSB / VPB page: edition defaults, compression mappings in both
// directions, checksum rules, the "osb" option string, migration of the
// retired texture keys and the import behaviour of both native formats.
#include "fileio/lmOsbPreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

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

const QString kLossy75 = "compressTextures=true,texturesCompressionQuality=75,texturesImageType=jpeg";

} // namespace

class tst_Osb : public QObject
{
    Q_OBJECT

private:
    void start(lmOsbPreferencesGUII &osb)
    {
        osb.setDefault(lmPreferences::getData(), false);
        osb.updateGUI();
    }

    QStringList applied(lmOsbPreferencesGUII &osb)
    {
        lmCallLog::clear();
        osb.apply();
        return callLog();
    }

private slots:
    void init() { lmResetHost(); }

    void defaultsArePushedInApplyOrder()
    {
        lmOsbPreferencesGUII osb;
        osb.setDefault(lmPreferences::getData(), true);
        osb.updateGUI();
        QVERIFY(!osb.page()->_compress_quality->isEnabled());
        QCOMPARE(applied(osb), QStringList({
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
    }

    void textureCompressionOptionStrings()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();

        // The user picks "Lossy" from the keyboard: the quality becomes editable.
        QTest::keyClick(page->_image_type, Qt::Key_Down);
        QTest::keyClick(page->_image_type, Qt::Key_Down);
        QVERIFY(page->_compress_quality->isEnabled());
        page->_compress_quality->setValue(75);
        osb.storeGUI();
        QVERIFY(holds("OsbFileIO texture compression type", 2));
        QCOMPARE(applied(osb)[4], osbOptions("inlineTextures=true," + kLossy75));

        QTest::keyClick(page->_image_type, Qt::Key_Up);
        QVERIFY(!page->_compress_quality->isEnabled());
        page->_inline_textures->setChecked(false);
        osb.storeGUI();
        QCOMPARE(applied(osb)[4], osbOptions("inlineTextures=false,compressTextures=true,"
                                             "texturesCompressionQuality=75,texturesImageType=png"));

        // Types outside the combo: below 1 is off, above 2 is jpeg.
        setStored("OsbFileIO texture compression type", -1);
        QCOMPARE(applied(osb)[4], osbOptions("inlineTextures=false,compressTextures=false"));
        setStored("OsbFileIO texture compression type", 7);
        QCOMPARE(applied(osb)[4], osbOptions("inlineTextures=false," + kLossy75));
    }

    void fileCompressionMapsBothWays()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        QComboBox *compression = osb.page()->_compression;

        // Stored 2 (the default) and 1 both show "Fast" and push 2; storing writes 1.
        for (int stored : {2, 1}) {
            setStored("OsbFileIO compression type", stored);
            compression->setCurrentIndex(0);
            osb.updateGUI();
            QCOMPARE(compression->currentText(), QStringLiteral("Fast"));
            QCOMPARE(applied(osb)[0], QStringLiteral("OpenSGFileIO::setCompressionType(2)"));
            osb.storeGUI();
            QVERIFY(holds("OsbFileIO compression type", 1));
            QVERIFY(holds("OsbFileIO force compression", false));
        }
        const struct
        {
            int index, stored;
            const char *pushed;
        } choices[] = {{0, 0, "OpenSGFileIO::setCompressionType(1)"}, {2, 3, "OpenSGFileIO::setCompressionType(4)"}};
        for (const auto &c : choices) {
            compression->setCurrentIndex(c.index);
            osb.storeGUI();
            QVERIFY(holds("OsbFileIO compression type", c.stored));
            QVERIFY(holds("OsbFileIO force compression", true));
            QCOMPARE(applied(osb)[0], QString(c.pushed));
            compression->setCurrentIndex(1);
            osb.updateGUI();
            QCOMPARE(compression->currentIndex(), c.index);
        }

        // A type the combo cannot show is pushed mapped and leaves the combo alone.
        setStored("OsbFileIO compression type", 4);
        osb.updateGUI();
        QCOMPARE(compression->currentText(), QStringLiteral("Best"));
        QCOMPARE(applied(osb)[0], QStringLiteral("OpenSGFileIO::setCompressionType(5)"));
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

        setStored("OsbFileIO compression type", 3);
        setStored("OsbFileIO inline textures", false);
        setStored("OsbFileIO reader crc test", false);
        setStored("OsbFileIO writer crc test", false);
        osb.updateGUI();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Fast"));
        QCOMPARE(applied(osb).mid(0, 5), QStringList({
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
        QVERIFY(holds("OsbFileIO reader crc test", true));
        QVERIFY(holds("OsbFileIO writer crc test", true));
    }

    void checksumTestsAndProjectSettings()
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
        osb.storeGUI();
        QVERIFY(holds("VpbFileIO Maximal number of increments", 0u));
        QStringList lines = applied(osb);
        QCOMPARE(lines.mid(1, 3), QStringList({"OpenSGFileIO::setNewFormat(false)", "lmFileIO::setReaderCRCTest(true)",
                                               "lmFileIO::setWriterCRCTest(false)"}));
        QCOMPARE(lines.mid(5, 2),
                 QStringList({"lmFileIO::enableIncrementalSave(false)", "lmFileIO::setIncrementalSaveLimit(0)"}));

        // A missing writer key takes the reader's value; missing switches are skipped.
        lmPreferences::getData().remove("OsbFileIO writer crc test");
        lmPreferences::getData().remove("VpbFileIO Incremental save enabled");
        lines = applied(osb);
        QCOMPARE(lines[3], QStringLiteral("lmFileIO::setWriterCRCTest(true)"));
        QCOMPARE(lines[5], QStringLiteral("lmFileIO::setIncrementalSaveLimit(0)"));
    }

    void retiredTextureKeysMigrateOnce()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        const struct
        {
            bool compress;
            const char *imageType;
            const char *shown;
        } cases[] = {{false, "png", "None"}, {true, "png", "Lossless"}, {true, "PNG", "Lossy"}};
        for (const auto &c : cases) {
            setStored("OsbFileIO compress textures", c.compress);
            setStored("OsbFileIO textures image type", std::string(c.imageType));
            osb.updateGUI();
            QCOMPARE(osb.page()->_image_type->currentText(), QString(c.shown));
            QVERIFY(!lmPreferences::getData().contains("OsbFileIO compress textures"));
            QVERIFY(!lmPreferences::getData().contains("OsbFileIO textures image type"));
        }

        // One retired key alone is not migrated and stays.
        setStored("OsbFileIO compress textures", true);
        setStored("OsbFileIO texture compression type", 1);
        osb.updateGUI();
        QCOMPARE(osb.page()->_image_type->currentText(), QStringLiteral("Lossless"));
        QVERIFY(lmPreferences::getData().contains("OsbFileIO compress textures"));
    }

    void importBehaviourFollowsTheLUMOKeys()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();
        setStored("LUMOOptions import smart reference behavior", 5);
        setStored("LUMOOptions import create as smart", true);
        osb.updateGUI();
        osb.updateGUI();
        QCOMPARE(page->m_importBehavior->count(), 2);
        QCOMPARE(page->m_importBehavior->currentText(), QStringLiteral("Remove References"));
        QVERIFY(page->m_importAsSmart->isChecked());
        // The OpenSG keys still hold 2 and false: they are not read.
        QCOMPARE(applied(osb).mid(9), QStringList({"write(\"LUMO\", 3, true)", "write(\"OpenSG\", 3, true)"}));
        // A behaviour that cannot be read is no 2 either.
        setStored("LUMOOptions import smart reference behavior", 2.0);
        setStored("LUMOOptions import create as smart", false);
        {
            lmStderrCapture capture;
            QCOMPARE(applied(osb).mid(9), QStringList({"write(\"LUMO\", 3, false)", "write(\"OpenSG\", 3, false)"}));
            QCOMPARE(capture.text().count("'LUMOOptions import smart reference behavior' has wrong type"), 1);
        }
        lmPreferences::getData().remove("LUMOOptions import smart reference behavior");
        QCOMPARE(applied(osb).mid(9), QStringList({"write(\"LUMO\", 3, false)", "write(\"OpenSG\", 3, false)"}));

        page->m_importBehavior->setCurrentIndex(0);
        page->m_importAsSmart->setChecked(false);
        setStored("OpenSGOptions import smart reference behavior", 3);
        osb.storeGUI();
        for (const char *format : {"LUMO", "OpenSG"}) {
            QVERIFY(holds(std::string(format) + "Options import smart reference behavior", 2));
            QVERIFY(holds(std::string(format) + "Options import create as smart", false));
        }
    }

    void wrongTypesAreReportedAndSkipped()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        setStored("OsbFileIO pack indices", 1);                    // read, never used
        setStored("OsbFileIO compression type", std::string("3")); // falls back to 2
        setStored("VpbFileIO Maximal number of increments", 5);    // int, not unsigned
        osb.page()->_incrementLimit->setValue(9);
        lmStderrCapture capture;
        osb.updateGUI();
        const QStringList lines = applied(osb);
        QCOMPARE(wrongTypeReports(capture.text()),
                 QStringList({"OsbFileIO compression type x2", "OsbFileIO pack indices x1",
                              "VpbFileIO Maximal number of increments x2"}));
        QCOMPARE(osb.page()->_incrementLimit->value(), 9);
        QCOMPARE(lines[0], QStringLiteral("OpenSGFileIO::setCompressionType(2)"));
        QCOMPARE(lines[6], QStringLiteral("lmFileIO::setExecuteEmbeddedScript(true)"));
    }
};

QTEST_MAIN(tst_Osb)
#include "tst_osb.moc"
