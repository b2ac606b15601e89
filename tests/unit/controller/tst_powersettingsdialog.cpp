#include "controller/powersettingsdialog.h"
#include "controllerrow.h"
#include "support/dialoglook.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QtTest>

namespace {

/// A row whose power module's button was clicked.
class OpenDialog
{
public:
    OpenDialog()
    {
        row.controller->GetView()->show();
        open();
    }

    void open()
    {
        QTest::mouseClick(row.child<QPushButton>("pushButton_powModType"), Qt::LeftButton);
        dialog = row.child<PowerSettingsDialog>("powerSettingsDialog");
    }

    QComboBox *box() const { return childByName<QComboBox>(dialog, "comboBox_Protection"); }

    void choose(int index)
    {
        box()->setFocus();
        QTest::keyClick(box(), Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(box(), Qt::Key_Down);
        QCOMPARE(box()->currentIndex(), index);
    }

    void click(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(childByName<QDialogButtonBox>(dialog, "buttonBox")->button(button), Qt::LeftButton);
    }

    static void deliverDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    Row row;
    QPointer<PowerSettingsDialog> dialog;
};

/// Has a warning icon of this size, black on the left and white on the right, whatever icons are installed.
class IconStyle : public QProxyStyle
{
public:
    explicit IconStyle(int size)
        : m_size(size)
    {}

    QIcon standardIcon(StandardPixmap which, const QStyleOption *option, const QWidget *widget) const override
    {
        if (which != SP_MessageBoxWarning)
            return QProxyStyle::standardIcon(which, option, widget);
        QPixmap picture(m_size, m_size);
        picture.fill(Qt::white);
        QPainter(&picture).fillRect(0, 0, m_size / 2, m_size, Qt::black);
        return QIcon(picture);
    }

private:
    int m_size;
};

int greyAt(const QImage &image, int x)
{
    return qGray(image.pixel(x, image.height() / 2));
}

const QStringList kNothing;

} // namespace

using Leave = void (*)(OpenDialog &);
Q_DECLARE_METATYPE(Leave)

/// The dialog of the power module's protection, alone and at the top row.
class TstPowerSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_usualStyle = QApplication::style()->objectName(); }
    void cleanup();
    void windowIsAsAgreed();
    void entriesAreAsAgreed_data();
    void entriesAreAsAgreed();
    void textsAreAsAgreed();
    void warningIconIsTheStandardOneAt64By64_data();
    void warningIconIsTheStandardOneAt64By64();
    void smallIconIsEnlargedSmoothly();
    void largeIconIsReduced();
    void warningStaysWhateverIsChosen();
    void buttonsAreOkAndCancel();
    void selectedTextFollowsTheBox();
    void okAcceptsAndCancelRejects();
    void controlsHaveAccessibleNames();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void tabOrderFollowsReadingOrder();
    void buttonOpensTheDialogAndSendsNothing();
    void acceptedProtectionIsSent_data();
    void acceptedProtectionIsSent();
    void acceptedFirstEntryIsSentWithoutAChoice();
    void okWithoutAnEntrySendsNothing();
    void leavingOtherwiseSendsNothing_data();
    void leavingOtherwiseSendsNothing();
    void dialogBeginsAnewEachTime();
    void reportWhileOpenLeavesTheChoice();
    void rowDeletedWhileOpenSendsNothing();
    void viewDeletedWhileOpenSendsNothing();

private:
    QString m_usualStyle;
};

void TstPowerSettingsDialog::cleanup()
{
    dialoglook::resetFont();
    QApplication::setStyle(m_usualStyle);
}

void TstPowerSettingsDialog::windowIsAsAgreed()
{
    const PowerSettingsDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Power settings"));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void TstPowerSettingsDialog::entriesAreAsAgreed_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("standard") << 0 << "The output voltage will be switched off when temperature is too high.";
    QTest::newRow("derating") << 1
                              << "The output voltage will be reduced to minimum when temperature\nis too "
                                 "high. If that does not help, it is switched off.";
    QTest::newRow("mission critical") << 2
                                      << "The output voltage remains unchanged even if the "
                                         "electronics\ncould be damaged by high module temperatures.";
}

void TstPowerSettingsDialog::entriesAreAsAgreed()
{
    QFETCH(int, index);
    const PowerSettingsDialog dialog;
    const auto *box = childByName<QComboBox>(&dialog, "comboBox_Protection");
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->itemText(index), QString::fromLatin1(QTest::currentDataTag()));
    QTEST(box->itemData(index, Qt::ToolTipRole).toString(), "toolTip");
}

void TstPowerSettingsDialog::textsAreAsAgreed()
{
    const PowerSettingsDialog dialog;
    QCOMPARE(childByName<QLabel>(&dialog, "label_ProtectionMode")->text(),
             QStringLiteral("Self protecion mode")); // as agreed
    QCOMPARE(childByName<QLabel>(&dialog, "label_WarningText")->text(),
             QStringLiteral("Activating mission critical mode\nwill void the warranty."));
}

void TstPowerSettingsDialog::warningIconIsTheStandardOneAt64By64_data()
{
    QTest::addColumn<QString>("style");
    QTest::newRow("Fusion") << "Fusion";
    QTest::newRow("Windows") << "Windows";
}

void TstPowerSettingsDialog::warningIconIsTheStandardOneAt64By64()
{
    QFETCH(QString, style);
    QVERIFY(QApplication::setStyle(style));
    PowerSettingsDialog dialog;
    const auto *label = childByName<QLabel>(&dialog, "label_Warning");
    QCOMPARE(label->text(), QString());
    const QPixmap picture = label->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.size() / picture.devicePixelRatio(), QSize(64, 64));
    const QIcon standard = dialog.style()->standardIcon(QStyle::SP_MessageBoxWarning);
    QCOMPARE(
        picture.toImage(),
        standard.pixmap(64, 64).scaled(64, 64, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).toImage());
    dialog.show();
    QVERIFY(label->contentsRect().width() >= 64);
    QVERIFY(label->contentsRect().height() >= 64);
}

void TstPowerSettingsDialog::smallIconIsEnlargedSmoothly()
{
    QApplication::setStyle(new IconStyle(16));
    const PowerSettingsDialog dialog;
    const QPixmap picture = childByName<QLabel>(&dialog, "label_Warning")->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.size(), QSize(64, 64));
    const QImage image = picture.toImage();
    QCOMPARE(greyAt(image, 2), 0);
    QCOMPARE(greyAt(image, 61), 255);
    const int middle = greyAt(image, 31); // the edge runs over several pixels
    QVERIFY2(middle > 32 && middle < 223, qPrintable(QString::number(middle)));
}

void TstPowerSettingsDialog::largeIconIsReduced()
{
    QApplication::setStyle(new IconStyle(128));
    const PowerSettingsDialog dialog;
    const QPixmap picture = childByName<QLabel>(&dialog, "label_Warning")->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.size(), QSize(64, 64));
    QCOMPARE(greyAt(picture.toImage(), 2), 0);
    QCOMPARE(greyAt(picture.toImage(), 61), 255);
}

void TstPowerSettingsDialog::warningStaysWhateverIsChosen()
{
    PowerSettingsDialog dialog;
    dialog.show();
    auto *box = childByName<QComboBox>(&dialog, "comboBox_Protection");
    const auto *text = childByName<QLabel>(&dialog, "label_WarningText");
    box->setFocus();
    for (int i = 0; i < 3; ++i) {
        QVERIFY(text->isVisible());
        QCOMPARE(text->text(), QStringLiteral("Activating mission critical mode\nwill void the warranty."));
        QTest::keyClick(box, Qt::Key_Down);
    }
}

void TstPowerSettingsDialog::buttonsAreOkAndCancel()
{
    const PowerSettingsDialog dialog;
    QCOMPARE(childByName<QDialogButtonBox>(&dialog, "buttonBox")->standardButtons(),
             QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void TstPowerSettingsDialog::selectedTextFollowsTheBox()
{
    PowerSettingsDialog dialog;
    dialog.show();
    QCOMPARE(dialog.selectedText(), QStringLiteral("standard"));
    auto *box = childByName<QComboBox>(&dialog, "comboBox_Protection");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(dialog.selectedText(), QStringLiteral("derating"));
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(dialog.selectedText(), QStringLiteral("mission critical"));
}

void TstPowerSettingsDialog::okAcceptsAndCancelRejects()
{
    PowerSettingsDialog dialog;
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    const QSignalSpy rejected(&dialog, &QDialog::rejected);
    const auto *buttons = childByName<QDialogButtonBox>(&dialog, "buttonBox");
    dialog.show();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(rejected.count(), 0);
    dialog.show();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(rejected.count(), 1);
}

void TstPowerSettingsDialog::controlsHaveAccessibleNames()
{
    const PowerSettingsDialog dialog;
    QVERIFY(!childByName<QComboBox>(&dialog, "comboBox_Protection")->accessibleName().isEmpty());
    QCOMPARE(dialoglook::withoutAccessibleName(dialog), QStringList());
}

void TstPowerSettingsDialog::nothingIsClipped_data()
{
    dialoglook::addFonts();
}

void TstPowerSettingsDialog::nothingIsClipped()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    PowerSettingsDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialoglook::clipped(dialog), QStringList());
}

void TstPowerSettingsDialog::tabOrderFollowsReadingOrder()
{
    PowerSettingsDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    childByName<QComboBox>(&dialog, "comboBox_Protection")->setFocus();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    const auto *buttons = childByName<QDialogButtonBox>(&dialog, "buttonBox");
    QVERIFY(buttons->isAncestorOf(dialog.focusWidget()));
}

void TstPowerSettingsDialog::buttonOpensTheDialogAndSendsNothing()
{
    OpenDialog o; // the click returned
    QVERIFY(o.dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), o.dialog.data());
    QCOMPARE(o.box()->currentText(), QStringLiteral("standard"));
    o.choose(2);
    QCOMPARE(o.row.takeSettings(), kNothing);
}

void TstPowerSettingsDialog::acceptedProtectionIsSent_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("setting");
    QTest::newRow("standard") << 0 << "1 0x30 0";
    QTest::newRow("derating") << 1 << "1 0x31 0";
    QTest::newRow("mission critical") << 2 << "1 0x32 0";
}

void TstPowerSettingsDialog::acceptedProtectionIsSent()
{
    QFETCH(int, index);
    QFETCH(QString, setting);
    OpenDialog o;
    const MessageCatcher log;
    o.choose(index);
    o.click(QDialogButtonBox::Ok);
    QCOMPARE(o.row.takeSettings(), QStringList{setting});
    const QString line =
        QStringLiteral("void ModuleController_Ctrllr::Slot_PowerButton() : user selected %1 list index %2");
    const QString text = plainLog(log.lines());
    QVERIFY2(text.contains(line.arg(QString::fromLatin1(QTest::currentDataTag())).arg(index)),
             qPrintable(text));
    OpenDialog::deliverDeletions();
    QVERIFY(!o.dialog);
    QCOMPARE(o.row.takeSettings(), kNothing);
}

void TstPowerSettingsDialog::acceptedFirstEntryIsSentWithoutAChoice()
{
    OpenDialog o;
    o.click(QDialogButtonBox::Ok);
    QCOMPARE(o.row.takeSettings(), QStringList{QStringLiteral("1 0x30 0")});
}

void TstPowerSettingsDialog::okWithoutAnEntrySendsNothing()
{
    OpenDialog o;
    o.box()->setCurrentIndex(-1);
    const MessageCatcher log;
    o.click(QDialogButtonBox::Ok);
    QVERIFY(!o.dialog || !o.dialog->isVisible());
    QCOMPARE(o.row.takeSettings(), kNothing);
    QVERIFY(!log.containsText(QStringLiteral("user selected")));
}

void TstPowerSettingsDialog::leavingOtherwiseSendsNothing_data()
{
    QTest::addColumn<Leave>("leave");
    QTest::newRow("Cancel") << Leave([](OpenDialog &o) { o.click(QDialogButtonBox::Cancel); });
    QTest::newRow("title bar") << Leave([](OpenDialog &o) { o.dialog->close(); });
    QTest::newRow("Escape") << Leave([](OpenDialog &o) { QTest::keyClick(o.dialog, Qt::Key_Escape); });
}

void TstPowerSettingsDialog::leavingOtherwiseSendsNothing()
{
    QFETCH(Leave, leave);
    OpenDialog o;
    o.choose(1);
    const MessageCatcher log;
    leave(o);
    OpenDialog::deliverDeletions();
    QVERIFY(!o.dialog);
    QCOMPARE(o.row.takeSettings(), kNothing);
    QVERIFY(!log.containsText(QStringLiteral("user selected")));
}

void TstPowerSettingsDialog::dialogBeginsAnewEachTime()
{
    OpenDialog o;
    o.choose(2);
    o.click(QDialogButtonBox::Ok);
    OpenDialog::deliverDeletions();
    o.row.takeSettings();
    o.open();
    QCOMPARE(o.box()->currentText(), QStringLiteral("standard"));
    o.choose(1);
    o.click(QDialogButtonBox::Ok);
    QCOMPARE(o.row.takeSettings(), QStringList{QStringLiteral("1 0x31 0")});
}

void TstPowerSettingsDialog::reportWhileOpenLeavesTheChoice()
{
    OpenDialog o;
    o.choose(1);
    o.row.take(outputStatus(0, 12000, 12000, 2));
    QCOMPARE(o.box()->currentText(), QStringLiteral("derating"));
    QCOMPARE(o.row.text("label_Protection"), QStringLiteral("mission critical"));
    o.row.take(powerStatus(kPowerType, "", "")); // the part with the button hides
    QVERIFY(o.dialog);
    QCOMPARE(o.row.takeSettings(), kNothing);
}

void TstPowerSettingsDialog::rowDeletedWhileOpenSendsNothing()
{
    OpenDialog o;
    o.choose(1);
    o.row.controller.reset();
    QVERIFY(!o.dialog);
    QVERIFY(!QApplication::activeModalWidget());
    OpenDialog::deliverDeletions();
    QCOMPARE(o.row.takeSettings(), kNothing);
}

void TstPowerSettingsDialog::viewDeletedWhileOpenSendsNothing()
{
    OpenDialog o;
    o.choose(1);
    delete o.row.controller->GetView();
    QVERIFY(!o.dialog);
    OpenDialog::deliverDeletions();
    QCOMPARE(o.row.takeSettings(), kNothing);
}

QTEST_MAIN(TstPowerSettingsDialog)
#include "tst_powersettingsdialog.moc"
