#include "reports/reportfilename.h"

#include <QDateTime>
#include <QtTest>

/// Names of report files.
class TstReportFileName : public QObject
{
    Q_OBJECT

private slots:
    void systemProposal_data();
    void systemProposal();
    void moduleProposal_data();
    void moduleProposal();
    void folderStaysAsItIs();
    void timeHasTwoDigitsForEachPart();
    void baseName_data();
    void baseName();
};

namespace {

const QDateTime kNow(QDate(2026, 3, 5), QTime(9, 8, 7, 654));

} // namespace

void TstReportFileName::systemProposal_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("proposal");
    QTest::newRow("no folder") << ""
                               << "20260305090807_VX_SystemReport_";
    QTest::newRow("folder") << "/home/u"
                            << "/home/u/20260305090807_VX_SystemReport_";
    QTest::newRow("drive") << "C:/Reports"
                           << "C:/Reports/20260305090807_VX_SystemReport_";
    QTest::newRow("blanks and umlauts")
        << QStringLiteral("/Meine Berichte/Süd")
        << QStringLiteral("/Meine Berichte/Süd/20260305090807_VX_SystemReport_");
}

void TstReportFileName::systemProposal()
{
    QFETCH(QString, folder);
    QTEST(reportfilename::systemProposal(folder, kNow), "proposal");
}

void TstReportFileName::moduleProposal_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("serialNumber");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("proposal");
    const QString time = QStringLiteral("20260305090807");
    QTest::newRow("blank in the number") << ""
                                         << "12 34" << 1 << time + "_000001234_VX_STGX_";
    QTest::newRow("folder") << "/r"
                            << "12 34" << 2 << "/r/" + time + "_000001234_VX_VOLT_";
    QTest::newRow("no number") << ""
                               << "" << 0 << time + "_000000000_VX_UNKNWN0_";
    QTest::newRow("99") << ""
                        << "1" << 99 << time + "_000000001_VX_UNKNWN99_";
    QTest::newRow("130") << ""
                         << "1" << 130 << time + "_000000001_VX_INDUC_TSMTR_";
    QTest::newRow("long number") << ""
                                 << "12345 678901" << 9 << time + "_12345678901_VX_Analog_";
    QTest::newRow("slash") << "/r"
                           << "a/b" << 4 << "/r/" + time + "_000000a_b_VX_THERMO_";
    QTest::newRow("going up") << "/r"
                              << "../../x" << 4 << "/r/" + time + "_00______x_VX_THERMO_";
    QTest::newRow("every forbidden one")
        << ""
        << "\\/:*?\"<>|." << 4 << (time + "_" + "__________" + "_VX_THERMO_");
    QTest::newRow("line end") << ""
                              << "a\nb" << 4 << time + "_000000a_b_VX_THERMO_";
    QTest::newRow("zero") << "" << (QStringLiteral("a") + QChar(0) + 'b') << 4
                          << time + "_000000a_b_VX_THERMO_";
    QTest::newRow("escape") << "" << (QStringLiteral("a") + QChar(0x1B) + 'b') << 4
                            << time + "_000000a_b_VX_THERMO_";
    QTest::newRow("allowed ones") << "" << QStringLiteral("ä&$'#%1") << 4
                                  << time + QStringLiteral("_00ä&$'#%1_VX_THERMO_");
}

void TstReportFileName::moduleProposal()
{
    QFETCH(QString, folder);
    QFETCH(QString, serialNumber);
    QFETCH(int, code);
    QTEST(reportfilename::moduleProposal(folder, kNow, serialNumber, static_cast<quint8>(code)), "proposal");
}

void TstReportFileName::folderStaysAsItIs()
{
    QCOMPARE(reportfilename::moduleProposal(QStringLiteral("C:/a?b\"c"), kNow, QStringLiteral("1:2"), 7),
             QStringLiteral("C:/a?b\"c/20260305090807_0000001_2_VX_4_20_"));
}

void TstReportFileName::timeHasTwoDigitsForEachPart()
{
    const QDateTime evening(QDate(2031, 12, 24), QTime(23, 59, 58));
    QCOMPARE(reportfilename::systemProposal(QString(), evening),
             QStringLiteral("20311224235958_VX_SystemReport_"));
    const QDateTime midnight(QDate(2031, 1, 1), QTime(0, 0, 0));
    QCOMPARE(reportfilename::systemProposal(QString(), midnight),
             QStringLiteral("20310101000000_VX_SystemReport_"));
}

void TstReportFileName::baseName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::newRow("with its suffix") << "/home/u/report.pdf"
                                     << "report.pdf";
    QTest::newRow("no folder") << "report.pdf"
                               << "report.pdf";
    QTest::newRow("several points") << "/a.b/r.1.xlsx"
                                    << "r.1.xlsx";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("ends with a slash") << "/a/b/"
                                       << "";
    QTest::newRow("two slashes") << "/a//b"
                                 << "b";
    QTest::newRow("two apostrophes") << "/a/b''c.pdf"
                                     << "c.pdf";
    QTest::newRow("two apostrophes in the folder") << "/a''b/c.pdf"
                                                   << "c.pdf";
    QTest::newRow("one apostrophe") << "/a/it's.pdf"
                                    << "it's.pdf";
    QTest::newRow("three apostrophes") << "/a/b'''c.pdf"
                                       << "'c.pdf";
    QTest::newRow("backslash") << "C:\\a\\b.pdf"
                               << "C:\\a\\b.pdf";
    QTest::newRow("blanks, quotes, umlauts")
        << QStringLiteral("/x/Prüf \"1\" & 2.pdf") << QStringLiteral("Prüf \"1\" & 2.pdf");
}

void TstReportFileName::baseName()
{
    QFETCH(QString, path);
    QTEST(reportfilename::baseName(path), "name");
}

QTEST_GUILESS_MAIN(TstReportFileName)
#include "tst_reportfilename.moc"
