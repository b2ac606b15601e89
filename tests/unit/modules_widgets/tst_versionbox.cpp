#include "modules/common/versionbox.h"

#include <QMessageBox>
#include <QPointer>
#include <QtTest>

class TstVersionBox : public QObject
{
    Q_OBJECT

private slots:
    void boxKeepsFromAllWindowsAndDoesNotBlock();
};

void TstVersionBox::boxKeepsFromAllWindowsAndDoesNotBlock()
{
    QWidget row;
    row.show();
    showVersionBox(&row, QString(), QString(), QString()); // returns
    const QPointer<QMessageBox> box = row.findChild<QMessageBox *>();
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QCOMPARE(box->windowModality(), Qt::ApplicationModal);
    QTest::keyClick(box, Qt::Key_Escape);
    QTRY_VERIFY(!box);
}

QTEST_MAIN(TstVersionBox)
#include "tst_versionbox.moc"
