#include "firmware/firmwareimage.h"
#include "firmware/firmwarename.h"

#include <QtTest>

namespace {

using Verdict = FirmwareName::Verdict;

const QString kIce5 = QStringLiteral("iCE5LP4K-SG48");
const QString kIce40 = QStringLiteral("iCE40UP5K-SG48");
const QString kNoChip = QStringLiteral("000000000000000"); // fifteen

} // namespace

Q_DECLARE_METATYPE(FirmwareName::Verdict)

class TstFirmwareName : public QObject
{
    Q_OBJECT

private slots:
    void nameBeginsBehindTheLastSeparator_data();
    void nameBeginsBehindTheLastSeparator();
    void secondAndThirdPieceAreTheWords_data();
    void secondAndThirdPieceAreTheWords();
    void wordsMustBeEqualToTheLetter_data();
    void wordsMustBeEqualToTheLetter();
    void verdictCountsPieces_data();
    void verdictCountsPieces();
    void verdictHasTheAgreedNumbers();
    void moduleWordBecomesTextAndTarget_data();
    void moduleWordBecomesTextAndTarget();
    void chipIsNamedAnywhereInTheName_data();
    void chipIsNamedAnywhereInTheName();
    void folderDoesNotNameTheChip();
};

void TstFirmwareName::nameBeginsBehindTheLastSeparator_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *name, const QString &path, const QString &file) {
        QTest::newRow(name) << path << file;
    };
    const QString good = QStringLiteral("x_ANA_FPGA5_v2.bin");
    row("no folder", good, good);
    row("slash", "/home/a/" + good, good);
    row("backslash", R"(C:\fw\)" + good, good);
    row("bar", "a|" + good, good);
    row("apostrophe", "it's'" + good, good);
    row("apostrophe within the name", "/fw/joe's_ANA_FPGA5.bin", "s_ANA_FPGA5.bin");
    row("all four, slash last", R"(a\b|c'd/)" + good, good);
    row("all four, backslash last", R"(a/b|c'd\)" + good, good);
    row("all four, bar last", R"(a/b\c'd|)" + good, good);
    row("all four, apostrophe last", R"(a/b\c|d')" + good, good);
    row("two in a row", R"(a/\)" + good, good);
    row("colon parts nothing", "C:" + good, "C:" + good);
    row("quote parts nothing", "a\"" + good, "a\"" + good);
    row("blank parts nothing", "/my fw/my " + good, "my " + good);
    row("nothing behind the last", "/fw_ANA_FPGA5_a/", "");
    row("separator alone", "/", "");
    row("empty", "", "");
    row("non-Latin", QStringLiteral("/прошивка/ファイル_ANA_FPGA5_ü.bin"),
        QStringLiteral("ファイル_ANA_FPGA5_ü.bin"));
    row("line end in the folder", "/a\nb/" + good, good);
    row("half a surrogate pair in the folder", QStringLiteral("/a") + QChar(0xD800) + QLatin1Char('/') + good,
        good);
}

void TstFirmwareName::nameBeginsBehindTheLastSeparator()
{
    QFETCH(QString, path);
    QFETCH(QString, file);
    QCOMPARE(firmwareName(path).file, file);
}

void TstFirmwareName::secondAndThirdPieceAreTheWords_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("moduleWord");
    QTest::addColumn<QString>("fpgaWord");
    const auto row = [](const QString &path, const char *module, const char *fpga) {
        QTest::newRow(qPrintable('"' + path + '"')) << path << module << fpga;
    };
    row("x_ANA_FPGA5_v2.bin", "ANA", "FPGA5");
    row("_GTW_FPGA4_v2.bin", "GTW", "FPGA4");
    row("x_ANA.bin", "ANA.bin", "");
    row("x_ANA_", "ANA", "");
    row("x.bin", "", "");
    row("", "", "");
    row("_", "", "");
    row("x__ANA_FPGA5_v2.bin", "", "ANA");
    row("x_ANA__FPGA5_v2.bin", "ANA", "");
    row("x_y_z_w", "y", "z");
    row("FPGA4_CON_ANA_FPGA5.bin", "CON", "ANA");
    row("dir_ANA_FPGA5/x_CON_FPGA4_v.bin", "CON", "FPGA4");
    row(QStringLiteral("я_АНА_ПЛИС5_в"), "АНА", "ПЛИС5");
}

void TstFirmwareName::secondAndThirdPieceAreTheWords()
{
    QFETCH(QString, path);
    QFETCH(QString, moduleWord);
    QFETCH(QString, fpgaWord);
    const FirmwareName name = firmwareName(path);
    QCOMPARE(name.moduleWord, moduleWord);
    QCOMPARE(name.fpgaWord, fpgaWord);
}

void TstFirmwareName::wordsMustBeEqualToTheLetter_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("knownModule");
    QTest::addColumn<bool>("knownFpga");
    const auto row = [](const QString &path, bool module, bool fpga) {
        QTest::newRow(qPrintable('"' + path + '"')) << path << module << fpga;
    };
    row("x_CON_FPGA4_v", true, true);
    row("x_CON_FPGA5_v", true, true);
    row("x_ANA_FPGA4_v", true, true);
    row("x_ANA_FPGA5_v", true, true);
    row("x_GTW_FPGA4_v", true, true);
    row("x_GTW_FPGA5_v", true, true);
    row("x_CON_FPGA4", true, true);
    row("x_ana_FPGA5_v", false, true);
    row("x_ANA_fpga5_v", true, false);
    row("x_con_fpga4_v", false, false);
    row("x_Gtw_Fpga4_v", false, false);
    row("x_ANA_FPGA5.bin", true, false);
    row("x_ANA_FPGA6_v", true, false);
    row("x_ANA_FPGA_v", true, false);
    row("x_ANA_FPGA45_v", true, false);
    row("x_ANA_ FPGA4_v", true, false);
    row("x_ANALOG_FPGA4_v", false, true);
    row("x_CON _FPGA4_v", false, true);
    row("x_XCON_FPGA4_v", false, true);
    row("x_FPGA4_ANA_v", false, false);
    row("CON_FPGA4_v", false, false);
    row("x_ANA.bin", false, false);
    row("x-ANA-FPGA5-v", false, false);
    row("x__FPGA5_v", false, true);
    row("x_ANA__v", true, false);
    row("__ANA_FPGA5_v", false, false);
    row("", false, false);
    row(QStringLiteral("x_АNА_FPGА4_v"), false, false); // the letters A are Cyrillic
    row(QStringLiteral("x_ANA_FPGA５_v"), true, false); // a wide 5
    row(QStringLiteral("x_CON") + QChar(0) + "_FPGA4" + QChar(0) + "_v", false, false);
}

void TstFirmwareName::wordsMustBeEqualToTheLetter()
{
    QFETCH(QString, path);
    QFETCH(bool, knownModule);
    QFETCH(bool, knownFpga);
    const FirmwareName name = firmwareName(path);
    QCOMPARE(name.hasKnownModule(), knownModule);
    QCOMPARE(name.hasKnownFpga(), knownFpga);
    QCOMPARE(name.verdict() == Verdict::Invalid, !(knownModule && knownFpga));
    QCOMPARE(name.moduleText().isEmpty(), !knownModule);
}

void TstFirmwareName::verdictCountsPieces_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("pieces");
    QTest::addColumn<Verdict>("verdict");
    const auto row = [](const char *path, int pieces, Verdict verdict) {
        QTest::newRow(path) << path << pieces << verdict;
    };
    row("x.bin", 1, Verdict::Invalid);
    row("x_ANA.bin", 2, Verdict::Invalid);
    row("x_ANA_FPGA5", 3, Verdict::FewPieces);
    row("x_ANA_FPGA5_v2.bin", 4, Verdict::FewPieces);
    row("_ANA_FPGA5_v2.bin", 4, Verdict::FewPieces);
    row("x_ANA_FPGA5_1_2_3.bin", 6, Verdict::FewPieces);
    row("x_ANA_FPGA5___", 6, Verdict::FewPieces);
    row("x_ANA_FPGA5_1_2_3_4.bin", 7, Verdict::Complete);
    row("x_ANA_FPGA5____", 7, Verdict::Complete);
    row("x_ANA_FPGA5_1_2_3_4_5.bin", 8, Verdict::Complete);
    row("x_CON_FPGA4_1__3__.bin", 8, Verdict::Complete);
    row("a_b_c_d_e_f/x_CON_FPGA4_v.bin", 4, Verdict::FewPieces);
    row("x_ANA_FPGA6_1_2_3_4.bin", 7, Verdict::Invalid);
    row("x_ANB_FPGA5_1_2_3_4.bin", 7, Verdict::Invalid);
    row("x__ANA_FPGA5_1_2_3_4.bin", 8, Verdict::Invalid);
    row("______", 7, Verdict::Invalid);

    QTest::newRow("many pieces") << "x_ANA_FPGA4" + QString("_y").repeated(100000) << 100003
                                 << Verdict::Complete;
}

void TstFirmwareName::verdictCountsPieces()
{
    QFETCH(QString, path);
    QFETCH(int, pieces);
    QFETCH(Verdict, verdict);
    const FirmwareName name = firmwareName(path);
    QCOMPARE(name.pieces, pieces);
    QCOMPARE(name.verdict(), verdict);
}

void TstFirmwareName::verdictHasTheAgreedNumbers()
{
    QCOMPARE(int(firmwareName("x_ANA.bin").verdict()), 1);
    QCOMPARE(int(firmwareName("x_ANA_FPGA5_v2.bin").verdict()), 2);
    QCOMPARE(int(firmwareName("x_ANA_FPGA5_1_2_3_4.bin").verdict()), 3);
}

void TstFirmwareName::moduleWordBecomesTextAndTarget_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("fpga");
    const auto row = [](const char *path, const char *text, int module, int fpga) {
        QTest::newRow(path) << path << text << module << fpga;
    };
    row("x_CON_FPGA4_v.bin", "Controller", 0, 1);
    row("x_CON_FPGA5_v.bin", "Controller", 0, 2);
    row("x_ANA_FPGA4_v.bin", "Analog", 1, 1);
    row("x_ANA_FPGA5_v2.bin", "Analog", 1, 2);
    row("x_GTW_FPGA4_v.bin", "GTW", 2, 1);
    row("x_GTW_FPGA5_v.bin", "GTW", 2, 2);
    row("CON_GTW_FPGA5_FPGA4_ANA.bin", "GTW", 2, 2); // the free pieces say nothing
}

void TstFirmwareName::moduleWordBecomesTextAndTarget()
{
    QFETCH(QString, path);
    QFETCH(QString, text);
    QFETCH(int, module);
    QFETCH(int, fpga);
    const FirmwareName name = firmwareName(path);
    QCOMPARE(name.moduleText(), text);
    QCOMPARE(int(firmwareimage::targetOf(name).module), module);
    QCOMPARE(int(firmwareimage::targetOf(name).fpga), fpga);
}

void TstFirmwareName::chipIsNamedAnywhereInTheName_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("chip");
    const auto row = [](const QString &file, const QString &chip) {
        QTest::newRow(qPrintable('"' + file + '"')) << file << chip;
    };
    row("x_ANA_FPGA4_v.bin", kIce5);
    row("x_ANA_FPGA5_v.bin", kIce40);
    row("FPGA4", kIce5);
    row("FPGA5", kIce40);
    row("aFPGA5b.bin", kIce40);
    row("x_ANA_FPGA45_v.bin", kIce5);
    row("x_ANA_FPGA5_FPGA4.bin", kIce5);
    row("x_ANA_FPGA4_FPGA5.bin", kIce5);
    row("x_ANA_v.FPGA5", kIce40);
    row("x_ANA_fpga4_v.bin", kNoChip);
    row("x_ANA_FPGA6_v.bin", kNoChip);
    row("x_ANA_FPGA_4.bin", kNoChip);
    row("x_ANA_FPG A4.bin", kNoChip);
    row("iCE5LP4K-SG48.bin", kNoChip);
    row("", kNoChip);
    row(QStringLiteral("ファイルFPGA5ü.bin"), kIce40);
}

void TstFirmwareName::chipIsNamedAnywhereInTheName()
{
    QFETCH(QString, file);
    QFETCH(QString, chip);
    QCOMPARE(firmwareimage::chipOfName(file), chip);
}

void TstFirmwareName::folderDoesNotNameTheChip()
{
    const auto chip = [](const char *path) { return firmwareimage::chipOfName(firmwareName(path).file); };
    QCOMPARE(chip("/FPGA4/x_ANA_FPGA5_v2.bin"), kIce40);
    QCOMPARE(chip(R"(C:\x_CON_FPGA4_v\x_ANA_v2.bin)"), kNoChip);
    QCOMPARE(chip("FPGA4'x_ANA_FPGA5_v2.bin"), kIce40);
    QCOMPARE(chip("FPGA4|x_ANA_FPGA5_v2.bin"), kIce40);
}

QTEST_GUILESS_MAIN(TstFirmwareName)
#include "tst_firmwarename.moc"
