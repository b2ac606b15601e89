#include "app/versionnotice.h"

#include <QtTest>

class TstVersionNotice : public QObject
{
    Q_OBJECT

private slots:
    void noticeIsDue_data();
    void noticeIsDue();
};

void TstVersionNotice::noticeIsDue_data()
{
    QTest::addColumn<QString>("remote");
    QTest::addColumn<bool>("due");

    QTest::newRow("same version") << "1.1.62" << false;
    QTest::newRow("last number greater") << "1.1.63" << true;
    QTest::newRow("middle number greater") << "1.2.0" << true;
    QTest::newRow("first number greater") << "2.0.0" << true;
    QTest::newRow("last number smaller") << "1.1.61" << false;
    QTest::newRow("all numbers smaller") << "0.0.1" << false;
    QTest::newRow("smaller in front does not stop the comparison") << "1.0.99" << true;
    QTest::newRow("smaller first number does not stop it either") << "0.2.0" << true;
    QTest::newRow("numbers are compared, not texts") << "1.1.7" << false;
    QTest::newRow("leading zero") << "1.1.062" << false;
    QTest::newRow("four numbers, greater") << "1.1.62.1" << true;
    QTest::newRow("four numbers, all zero") << "0.0.0.0" << true;
    QTest::newRow("two numbers") << "1.1" << true;
    QTest::newRow("no number at all") << "unknown" << true;
    QTest::newRow("empty") << "" << true;
    QTest::newRow("other separators") << "V1-1_62" << false;
    QTest::newRow("runs of separators") << "v 1..1 . 63\r\n" << true;
    QTest::newRow("text behind it") << "1.1.62 beta" << false;
    QTest::newRow("number beyond reading counts as 0") << "1.1.99999999999999999999999" << false;
}

void TstVersionNotice::noticeIsDue()
{
    QFETCH(QString, remote);
    QFETCH(bool, due);
    QCOMPARE(isNewVersionNoticeDue(QStringLiteral("1.1.62"), remote), due);
}

QTEST_GUILESS_MAIN(TstVersionNotice)

#include "tst_versionnotice.moc"
