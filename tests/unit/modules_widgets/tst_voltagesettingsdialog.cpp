#include "modules/widgets/voltagesettingsdialog.h"

#include "support/childbyname.h"
#include "support/dialoglook.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

class TstVoltageSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void controlsAreAsAgreed();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void tabOrderFollowsReadingOrder();
    void okAcceptsAndEscapeRejects();
};

void TstVoltageSettingsDialog::cleanup()
{
    dialoglook::resetFont();
}

void TstVoltageSettingsDialog::controlsAreAsAgreed()
{
    const VoltageSettingsDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Auxiliary Voltag Setting")); // as agreed
    QCOMPARE(childByName<QRadioButton>(&dialog, "twenty4Volt")->text(), QStringLiteral("24 V"));
    QCOMPARE(childByName<QRadioButton>(&dialog, "twelveVolt")->text(), QStringLiteral("12 V"));
    QCOMPARE(childByName<QRadioButton>(&dialog, "fiveVolt")->text(), QStringLiteral("5 V"));
    QCOMPARE(childByName<QRadioButton>(&dialog, "manual")->text(), QStringLiteral("Manual"));
    QCOMPARE(childByName<QCheckBox>(&dialog, "channel1Checkbx")->text(), QStringLiteral("Channel 1"));
    QCOMPARE(childByName<QCheckBox>(&dialog, "channel2Checkbx")->text(), QStringLiteral("Channel 2"));
    QCOMPARE(childByName<QLabel>(&dialog, "label")->text(), QStringLiteral("Preset :"));
    QCOMPARE(childByName<QLineEdit>(&dialog, "valueManual")->text(), QString());
    QVERIFY(childByName<QDialogButtonBox>(&dialog, "buttonBox"));
    QCOMPARE(dialoglook::withoutAccessibleName(dialog), QStringList());
}

void TstVoltageSettingsDialog::nothingIsClipped_data()
{
    dialoglook::addFonts();
}

void TstVoltageSettingsDialog::nothingIsClipped()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    VoltageSettingsDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialoglook::clipped(dialog), QStringList());
}

void TstVoltageSettingsDialog::tabOrderFollowsReadingOrder()
{
    VoltageSettingsDialog dialog;
    childByName<QRadioButton>(&dialog, "fiveVolt")->setChecked(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    childByName<QCheckBox>(&dialog, "channel1Checkbx")->setFocus();
    QCOMPARE(dialoglook::tabOrder(dialog).mid(0, 4),
             (QStringList{"channel1Checkbx", "channel2Checkbx", "fiveVolt", "valueManual"}));
}

void TstVoltageSettingsDialog::okAcceptsAndEscapeRejects()
{
    VoltageSettingsDialog dialog;
    const QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTest::mouseClick(childByName<QPushButton>(&dialog, "okButton"), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    dialog.open();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(finished.count(), 2);
}

QTEST_MAIN(TstVoltageSettingsDialog)
#include "tst_voltagesettingsdialog.moc"
