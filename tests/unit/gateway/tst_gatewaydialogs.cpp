#include "base/gui/fonts.h"
#include "gateway/changegatewaydialog.h"
#include "gateway/externipandport.h"
#include "gateway/minmaxdialog.h"
#include "support/childbyname.h"
#include "support/dialoglook.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <functional>

namespace {

enum class Kind { ChangeGateway, Extern, MinMax };

/// One of the dialogs on screen, filled as the panel fills it. What it answers is noted.
struct Opened
{
    explicit Opened(Kind kind)
    {
        switch (kind) {
        case Kind::ChangeGateway: {
            auto made = std::make_unique<ChangeGatewayDialog>();
            QObject::connect(made.get(), &ChangeGatewayDialog::gatewayIpAddress, made.get(),
                             [this](const QString &address) { answers.append({address}); });
            made->ask();
            dialog = std::move(made);
            return;
        }
        case Kind::Extern: {
            auto made = std::make_unique<ExternIpAndPort>();
            QObject::connect(made.get(), &ExternIpAndPort::Signal_setExtDetails, made.get(),
                             [this](const QString &address, const QString &port) {
                                 answers.append({address, port});
                             });
            made->Slot_displayDialog("10.0.0.5", "7000");
            dialog = std::move(made);
            return;
        }
        case Kind::MinMax: {
            auto made = std::make_unique<MinMaxDialog>();
            QObject::connect(made.get(), &MinMaxDialog::Signal_setMinMaxValue, made.get(),
                             [this](const QStringList &answer) { answers.append(answer); });
            made->Slot_Execute({"Set Maximum", "64", "A title"});
            dialog = std::move(made);
            return;
        }
        }
    }

    QLineEdit *edit(const char *name) const { return childByName<QLineEdit>(dialog.get(), name); }
    QString label(const char *name) const { return childByName<QLabel>(dialog.get(), name)->text(); }
    void press(const char *button) const
    {
        QTest::mouseClick(childByName<QPushButton>(dialog.get(), button), Qt::LeftButton);
    }

    std::unique_ptr<QDialog> dialog;
    QList<QStringList> answers;
};

void addKinds()
{
    QTest::newRow("change gateway") << Kind::ChangeGateway;
    QTest::newRow("external server") << Kind::Extern;
    QTest::newRow("minimum and maximum") << Kind::MinMax;
}

} // namespace

Q_DECLARE_METATYPE(Kind)

/// The three dialogs of the gateway's panel, each on its own.
class TstGatewayDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void texts();
    void titleOfTheForm();
    void okAnswers();
    void emptyTexts();
    void leavingSendsNothing_data();
    void leavingSendsNothing();
    void dialogIsModalAndOnTop_data() { kinds(); }
    void dialogIsModalAndOnTop();
    void shortListOpensNothing_data();
    void shortListOpensNothing();
    void canBeOpenedAgain();
    void addressDialogStartsEmpty();
    void controlsAreWholeAndNamed_data();
    void controlsAreWholeAndNamed();
    void tabOrderIsReadingOrder();

private:
    void kinds()
    {
        QTest::addColumn<Kind>("kind");
        addKinds();
    }
};

void TstGatewayDialogs::cleanup()
{
    dialoglook::resetFont();
    fonts::installSubstitutions();
}

void TstGatewayDialogs::texts()
{
    const Opened address(Kind::ChangeGateway);
    QCOMPARE(address.dialog->windowTitle(), QStringLiteral("Enter Gateway Address"));
    QCOMPARE(address.label("label"), QStringLiteral("Modify Gateway Address"));
    QCOMPARE(address.label("label_2"), QStringLiteral("Gateway Address"));
    QCOMPARE(address.edit("IpAddress")->text(), QString());
    const Opened server(Kind::Extern);
    QCOMPARE(server.dialog->windowTitle(), QStringLiteral("Set External IP Address"));
    QCOMPARE(server.label("labelIP"), QStringLiteral("IP Address"));
    QCOMPARE(server.label("labelPort"), QStringLiteral("Port"));
    QCOMPARE(server.edit("ipAddress")->text(), QStringLiteral("10.0.0.5"));
    QCOMPARE(server.edit("portNo")->text(), QStringLiteral("7000"));
    const Opened value(Kind::MinMax);
    QCOMPARE(value.dialog->windowTitle(), QStringLiteral("A title"));
    QCOMPARE(value.label("mainLabel"), QStringLiteral("Set Maximum"));
    QCOMPARE(value.edit("valueBox")->text(), QStringLiteral("64"));
}

void TstGatewayDialogs::titleOfTheForm()
{
    const MinMaxDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Minimum Value"));
    QCOMPARE(childByName<QLabel>(&dialog, "mainLabel")->text(), QStringLiteral("Set Minimum"));
}

void TstGatewayDialogs::okAnswers()
{
    Opened address(Kind::ChangeGateway);
    QTest::keyClicks(address.edit("IpAddress"), "not an address ");
    address.press("okButton");
    QCOMPARE(address.answers, QList<QStringList>{{"not an address "}}); // unchecked
    QCOMPARE(address.dialog->result(), int(QDialog::Accepted));
    const Opened server(Kind::Extern);
    server.press("okButton");
    QCOMPARE(server.answers, (QList<QStringList>{{"10.0.0.5", "7000"}}));
    server.edit("portNo")->clear();
    qobject_cast<ExternIpAndPort *>(server.dialog.get())->Slot_displayDialog("9.9.9.9", "1");
    QCOMPARE(server.edit("ipAddress")->text(), QStringLiteral("9.9.9.9")); // opened again
    QCOMPARE(server.edit("portNo")->text(), QStringLiteral("1"));
    const Opened value(Kind::MinMax);
    QTest::keyClicks(value.edit("valueBox"), "128");
    QTest::keyClick(value.edit("valueBox"), Qt::Key_Return);
    QCOMPARE(value.answers, (QList<QStringList>{{"Set Maximum", "128"}}));
}

void TstGatewayDialogs::emptyTexts()
{
    const Opened address(Kind::ChangeGateway);
    address.press("okButton");
    QCOMPARE(address.answers, QList<QStringList>());
    const Opened server(Kind::Extern);
    server.edit("ipAddress")->clear();
    server.edit("portNo")->clear();
    server.press("okButton");
    QCOMPARE(server.answers, (QList<QStringList>{{"", ""}}));
    const Opened value(Kind::MinMax);
    value.edit("valueBox")->clear();
    value.press("okButton");
    QCOMPARE(value.answers, (QList<QStringList>{{"Set Maximum", ""}}));
}

void TstGatewayDialogs::leavingSendsNothing_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QByteArray>("how");
    for (const char *how : {"cancel", "escape", "close"}) {
        QTest::addRow("change gateway, %s", how) << Kind::ChangeGateway << QByteArray(how);
        QTest::addRow("external server, %s", how) << Kind::Extern << QByteArray(how);
        QTest::addRow("minimum and maximum, %s", how) << Kind::MinMax << QByteArray(how);
    }
}

void TstGatewayDialogs::leavingSendsNothing()
{
    QFETCH(Kind, kind);
    QFETCH(QByteArray, how);
    const Opened opened(kind);
    const auto edits = opened.dialog->findChildren<QLineEdit *>();
    QTest::keyClicks(edits.first(), "5");
    if (how == "cancel")
        opened.press("cancelButton");
    else if (how == "escape")
        QTest::keyClick(opened.dialog.get(), Qt::Key_Escape);
    else
        opened.dialog->close();
    QVERIFY(!opened.dialog->isVisible());
    QCOMPARE(opened.answers, QList<QStringList>());
}

void TstGatewayDialogs::dialogIsModalAndOnTop()
{
    QFETCH(Kind, kind);
    const Opened opened(kind);
    QVERIFY(opened.dialog->isVisible());
    QVERIFY(opened.dialog->isModal());
    QVERIFY(opened.dialog->windowFlags() & Qt::WindowStaysOnTopHint);
}

void TstGatewayDialogs::shortListOpensNothing_data()
{
    QTest::addColumn<QStringList>("items");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"Set Maximum"};
    QTest::newRow("two") << QStringList{"Set Minimum", "5"};
}

void TstGatewayDialogs::shortListOpensNothing()
{
    QFETCH(QStringList, items);
    MinMaxDialog dialog;
    dialog.Slot_Execute(items);
    QVERIFY(!dialog.isVisible());
}

void TstGatewayDialogs::canBeOpenedAgain()
{
    MinMaxDialog dialog;
    for (const char *value : {"1", "2"}) {
        dialog.Slot_Execute({"Set Minimum", value, "Set Minimum"});
        QVERIFY(dialog.isVisible());
        QCOMPARE(childByName<QLineEdit>(&dialog, "valueBox")->text(), QString(value));
        QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("valueBox"));
        QTest::mouseClick(childByName<QPushButton>(&dialog, "cancelButton"), Qt::LeftButton);
    }
}

void TstGatewayDialogs::addressDialogStartsEmpty()
{
    ChangeGatewayDialog dialog;
    auto *field = childByName<QLineEdit>(&dialog, "IpAddress");
    for (const char *button : {"okButton", "cancelButton", "okButton"}) {
        dialog.ask();
        QCOMPARE(field->text(), QString());
        QTest::keyClicks(field, "10.0.0.1");
        QTest::mouseClick(childByName<QPushButton>(&dialog, button), Qt::LeftButton);
    }
}

void TstGatewayDialogs::controlsAreWholeAndNamed_data()
{
    dialoglook::addFonts();
}

void TstGatewayDialogs::controlsAreWholeAndNamed()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "The font is not installed.");
    for (const Kind kind : {Kind::ChangeGateway, Kind::Extern, Kind::MinMax}) {
        const Opened opened(kind);
        QCOMPARE(dialoglook::clipped(*opened.dialog), QStringList());
        QCOMPARE(dialoglook::withoutAccessibleName(*opened.dialog), QStringList());
    }
}

void TstGatewayDialogs::tabOrderIsReadingOrder()
{
    const Opened server(Kind::Extern);
    QApplication::setActiveWindow(server.dialog.get());
    server.edit("ipAddress")->setFocus();
    // Which of the two buttons comes first is up to the platform.
    const QStringList order = dialoglook::tabOrder(*server.dialog);
    QCOMPARE(order.mid(0, 2), (QStringList{"ipAddress", "portNo"}));
    QCOMPARE(order.size(), 4);
}

QTEST_MAIN(TstGatewayDialogs)
#include "tst_gatewaydialogs.moc"
