#include "modules/widgets/dialog_manualoffset.h"

#include "support/childbyname.h"
#include "support/dialoglook.h"
#include "support/messagecatcher.h"

#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

class TstDialogManualOffset : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void windowIsAsAgreed();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void controlsAreNamed();
    void tabOrderFollowsReadingOrder();

    void automaticOffsetIsShown();
    void automaticOffsetStaysIfNothingIsDone();
    void enteredOffsetIsShown_data();
    void enteredOffsetIsShown();

    void manualTakesTheTextOfTheLineEdit();
    void automaticDisablesTheLineEdit();
    void andBackAgain();
    void typedTextIsTheValue();
    void typedTextIsTheValueThoughAutoIsChecked();
    void textIsNotJudged_data();
    void textIsNotJudged();
    void everyChangeIsLogged();

    void okAccepts();
    void returnAccepts();
    void cancelRejects();
    void escapeRejects();
    void closingRejectsOnce();
    void radioButtonsAreUsedByKeys();
    void openedDialogDoesNotBlockAndGoesByItself();
    void parentMayGoWhileTheDialogIsOpen();

private:
    void show(const QString &value);
    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(m_dialog.get(), name);
    }
    QLineEdit *edit() const { return child<QLineEdit>("lineEdit_Manual"); }
    QRadioButton *automatic() const { return child<QRadioButton>("radioButton_OptionAuto"); }
    QRadioButton *manual() const { return child<QRadioButton>("radioButton_OptionManual"); }
    void click(QRadioButton *button);
    void type(const QString &text);

    std::unique_ptr<Dialog_ManualOffset> m_dialog;
    std::unique_ptr<QSignalSpy> m_accepted;
    std::unique_ptr<QSignalSpy> m_rejected;
};

void TstDialogManualOffset::cleanup()
{
    m_dialog.reset();
    dialoglook::resetFont();
}

void TstDialogManualOffset::show(const QString &value)
{
    m_dialog = std::make_unique<Dialog_ManualOffset>(value, -10, 10, 0.1);
    m_accepted = std::make_unique<QSignalSpy>(m_dialog.get(), &QDialog::accepted);
    m_rejected = std::make_unique<QSignalSpy>(m_dialog.get(), &QDialog::rejected);
    m_dialog->open();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void TstDialogManualOffset::click(QRadioButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void TstDialogManualOffset::type(const QString &text)
{
    edit()->setFocus();
    edit()->selectAll();
    QTest::keyClicks(edit(), text);
}

void TstDialogManualOffset::windowIsAsAgreed()
{
    show("Auto");
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Offset"));
    QCOMPARE(m_dialog->windowFlags() & ~Qt::WindowFlags(Qt::WindowTitleHint | Qt::WindowSystemMenuHint),
             Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(child<QLabel>("label")->text(), QStringLiteral("Offset Method:"));
    QCOMPARE(child<QLabel>("label_2")->text(), QString());
    QCOMPARE(automatic()->text(), QStringLiteral("Auto"));
    QCOMPARE(manual()->text(), QStringLiteral("Manual"));
    QCOMPARE(edit()->width(), 130);
    QCOMPARE(QFontInfo(m_dialog->font()).pixelSize(), 12);
    QCOMPARE(edit()->font().family(), QStringLiteral("Segoe UI"));
    // The line edit stands beside its button.
    QVERIFY(edit()->x() > manual()->geometry().right());
    QVERIFY(qAbs(edit()->geometry().center().y() - manual()->geometry().center().y()) <= 1);
}

void TstDialogManualOffset::nothingIsClipped_data()
{
    dialoglook::addFonts();
}

void TstDialogManualOffset::nothingIsClipped()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    show("Auto");
    QCOMPARE(m_dialog->size(), QSize(229, 142));
    QCOMPARE(m_dialog->minimumSize(), m_dialog->maximumSize());
    QCOMPARE(dialoglook::clipped(*m_dialog), QStringList());
}

void TstDialogManualOffset::controlsAreNamed()
{
    show("Auto");
    QCOMPARE(dialoglook::withoutAccessibleName(*m_dialog), QStringList());
}

void TstDialogManualOffset::tabOrderFollowsReadingOrder()
{
    show("1.5");
    manual()->setFocus();
    // Of the two radio buttons Tab visits the checked one. Where Ok and Cancel stand is up to the platform.
    QStringList order = dialoglook::tabOrder(*m_dialog);
    QCOMPARE(order.mid(0, 2), (QStringList{"radioButton_OptionManual", "lineEdit_Manual"}));
    QStringList buttons = order.mid(2);
    const auto x = [this](const QString &name) { return m_dialog->findChild<QWidget *>(name)->x(); };
    QCOMPARE(buttons.size(), 2);
    QVERIFY(x(buttons.first()) < x(buttons.last()));
}

void TstDialogManualOffset::automaticOffsetIsShown()
{
    show("Auto");
    QVERIFY(automatic()->isChecked());
    QVERIFY(!manual()->isChecked());
    QCOMPARE(edit()->text(), QStringLiteral("0"));
    QVERIFY(edit()->isEnabled()); // until Auto is picked
}

void TstDialogManualOffset::automaticOffsetStaysIfNothingIsDone()
{
    show("Auto");
    QCOMPARE(m_dialog->value(), QStringLiteral("Auto"));
    QTest::mouseClick(child<QPushButton>("okButton"), Qt::LeftButton);
    QCOMPARE(m_dialog->value(), QStringLiteral("Auto"));
}

void TstDialogManualOffset::enteredOffsetIsShown_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("number") << "-1.25";
    QTest::newRow("zero") << "0";
    QTest::newRow("empty") << "";
    QTest::newRow("other case is no Auto") << "auto";
    QTest::newRow("no number") << QString::fromUtf8("µV?");
}

void TstDialogManualOffset::enteredOffsetIsShown()
{
    QFETCH(QString, value);
    show(value);
    QVERIFY(manual()->isChecked());
    QVERIFY(!automatic()->isChecked());
    QVERIFY(edit()->isEnabled());
    QCOMPARE(edit()->text(), value);
    QCOMPARE(m_dialog->value(), value);
}

void TstDialogManualOffset::manualTakesTheTextOfTheLineEdit()
{
    show("Auto");
    click(manual());
    QCOMPARE(m_dialog->value(), QStringLiteral("0"));
    QVERIFY(edit()->isEnabled());
}

void TstDialogManualOffset::automaticDisablesTheLineEdit()
{
    show("2.5");
    click(automatic());
    QCOMPARE(m_dialog->value(), QStringLiteral("Auto"));
    QVERIFY(!edit()->isEnabled());
    QCOMPARE(edit()->text(), QStringLiteral("2.5"));
}

void TstDialogManualOffset::andBackAgain()
{
    show("2.5");
    click(automatic());
    click(manual());
    QCOMPARE(m_dialog->value(), QStringLiteral("2.5"));
    QVERIFY(edit()->isEnabled());
}

void TstDialogManualOffset::typedTextIsTheValue()
{
    show("2.5");
    type("-7");
    QCOMPARE(m_dialog->value(), QStringLiteral("-7"));
}

void TstDialogManualOffset::typedTextIsTheValueThoughAutoIsChecked()
{
    show("Auto");
    type("3");
    QVERIFY(automatic()->isChecked());
    QCOMPARE(m_dialog->value(), QStringLiteral("3"));
}

void TstDialogManualOffset::textIsNotJudged_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("out of range") << "1000";
    QTest::newRow("no number") << "abc";
    QTest::newRow("decimal comma") << "1,5";
    QTest::newRow("blanks") << " 1 ";
}

void TstDialogManualOffset::textIsNotJudged()
{
    QFETCH(QString, text);
    show("2.5");
    type(text);
    QTest::keyClick(edit(), Qt::Key_Return);
    QCOMPARE(m_accepted->count(), 1);
    QCOMPARE(m_dialog->value(), text);
}

void TstDialogManualOffset::everyChangeIsLogged()
{
    show("2.5");
    const MessageCatcher log;
    type("12");
    QCOMPARE(log.lines(QtDebugMsg), (QStringList{"Changed value \"1\"", "Changed value \"12\""}));
}

void TstDialogManualOffset::okAccepts()
{
    show("2.5");
    QTest::mouseClick(child<QPushButton>("okButton"), Qt::LeftButton);
    QCOMPARE(m_accepted->count(), 1);
    QCOMPARE(m_rejected->count(), 0);
    QVERIFY(!m_dialog->isVisible());
}

void TstDialogManualOffset::returnAccepts()
{
    show("2.5");
    QVERIFY(child<QPushButton>("okButton")->isDefault());
    type("4");
    QTest::keyClick(edit(), Qt::Key_Return);
    QCOMPARE(m_accepted->count(), 1);
    QCOMPARE(m_dialog->value(), QStringLiteral("4"));
}

void TstDialogManualOffset::cancelRejects()
{
    show("2.5");
    QTest::mouseClick(child<QPushButton>("cancelButton"), Qt::LeftButton);
    QCOMPARE(m_accepted->count(), 0);
    QCOMPARE(m_rejected->count(), 1);
    QVERIFY(!m_dialog->isVisible());
}

void TstDialogManualOffset::escapeRejects()
{
    show("2.5");
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Escape);
    QCOMPARE(m_accepted->count(), 0);
    QCOMPARE(m_rejected->count(), 1);
    QVERIFY(!m_dialog->isVisible());
}

void TstDialogManualOffset::closingRejectsOnce()
{
    show("2.5");
    QVERIFY(m_dialog->close());
    QCOMPARE(m_accepted->count(), 0);
    QCOMPARE(m_rejected->count(), 1);
    QVERIFY(!m_dialog->isVisible());
}

void TstDialogManualOffset::radioButtonsAreUsedByKeys()
{
    show("2.5");
    manual()->setFocus();
    QTest::keyClick(manual(), Qt::Key_Up);
    QVERIFY(automatic()->hasFocus());
    QTest::keyClick(automatic(), Qt::Key_Space);
    QVERIFY(automatic()->isChecked());
    QCOMPARE(m_dialog->value(), QStringLiteral("Auto"));
    QVERIFY(!edit()->isEnabled());
    QTest::keyClick(automatic(), Qt::Key_Down);
    QVERIFY(manual()->hasFocus());
    QTest::keyClick(manual(), Qt::Key_Space);
    QCOMPARE(m_dialog->value(), QStringLiteral("2.5"));
    QVERIFY(edit()->isEnabled());
}

void TstDialogManualOffset::openedDialogDoesNotBlockAndGoesByItself()
{
    QWidget parent;
    parent.show();
    const QPointer<Dialog_ManualOffset> dialog(new Dialog_ManualOffset("1", 0, 1, 0.1, &parent));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    QVERIFY(dialog && dialog->isVisible());
    QVERIFY(dialog->isWindow());
    QTest::mouseClick(childByName<QPushButton>(dialog, "okButton"), Qt::LeftButton);
    QTRY_VERIFY(!dialog);
}

void TstDialogManualOffset::parentMayGoWhileTheDialogIsOpen()
{
    auto parent = std::make_unique<QWidget>();
    parent->show();
    const QPointer<Dialog_ManualOffset> dialog(new Dialog_ManualOffset("1", 0, 1, 0.1, parent.get()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const QSignalSpy accepted(dialog, &QDialog::accepted);
    dialog->open();
    parent.reset();
    QVERIFY(!dialog);
    QCOMPARE(accepted.count(), 0);
}

QTEST_MAIN(TstDialogManualOffset)
#include "tst_dialog_manualoffset.moc"
