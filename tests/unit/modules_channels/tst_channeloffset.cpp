#include "stripfixture.h"

#include "modules/widgets/dialog_manualoffset.h"

#include <QRadioButton>

namespace {

constexpr auto kBridges = {1, 4};
const QString kAutoStyle =
    QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor: rgb(235, 220, 0);");
const QString kConfirmedStyle = QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor:black;");
const QString kSentStyle = QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor:#C00000;");

} // namespace

/// The offset of the strips that feed a bridge.
class TstChannelOffset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newStripReadsAuto_data() { addFamilies(kBridges); }
    void newStripReadsAuto();
    void offsetOfAStatus_data() { addFamilies(kBridges); }
    void offsetOfAStatus();
    void acceptedValueIsSent_data() { addFamilies(kBridges); }
    void acceptedValueIsSent();
    void acceptedAutoIsRedToo_data() { addFamilies(kBridges); }
    void acceptedAutoIsRedToo();
    void textIsSentAsEntered_data();
    void textIsSentAsEntered();
    void rejectedDialogChangesNothing_data();
    void rejectedDialogChangesNothing();
    void dialogStartsWithWhatIsShown_data() { addFamilies(kBridges); }
    void dialogStartsWithWhatIsShown();
    void disabledStripOpensNoDialog_data() { addFamilies(kBridges); }
    void disabledStripOpensNoDialog();
    void dialogIsModalAndDoesNotBlock_data() { addFamilies(kBridges); }
    void dialogIsModalAndDoesNotBlock();
    void oneDialogAtATime_data() { addFamilies(kBridges); }
    void oneDialogAtATime();
    void deletedWithTheDialogOpen_data() { addFamilies(kBridges); }
    void deletedWithTheDialogOpen();

private:
    QPushButton *offset() const { return s->button("pushButton_ManualOffset"); }

    Dialog_ManualOffset *openDialog()
    {
        QTest::mouseClick(offset(), Qt::LeftButton);
        return s->strip->findChild<Dialog_ManualOffset *>();
    }

    static void enter(Dialog_ManualOffset *dialog, const QString &text)
    {
        auto *manual = childByName<QRadioButton>(dialog, "radioButton_OptionManual");
        QTest::mouseClick(manual, Qt::LeftButton, Qt::NoModifier, QPoint(8, manual->height() / 2));
        auto *edit = dialog->findChild<QLineEdit *>();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    static void press(Dialog_ManualOffset *dialog, const char *button)
    {
        QTest::mouseClick(childByName<QPushButton>(dialog, button), Qt::LeftButton);
    }

    std::unique_ptr<StripFixture> s;
};

void TstChannelOffset::init()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family);
    s->strip->setOffsetRange(-999.9, 999.9, 0.1);
    s->show();
}

void TstChannelOffset::cleanup()
{
    s.reset();
}

void TstChannelOffset::newStripReadsAuto()
{
    QCOMPARE(offset()->text(), QStringLiteral("Auto"));
    QCOMPARE(offset()->styleSheet(), kAutoStyle);
}

void TstChannelOffset::offsetOfAStatus()
{
    s->strip->setOffset(QStringLiteral("-12.5"));
    QCOMPARE(offset()->text(), QStringLiteral("-12.5"));
    QCOMPARE(offset()->styleSheet(), kConfirmedStyle);
    s->strip->setOffset(QStringLiteral("Auto"));
    QCOMPARE(offset()->text(), QStringLiteral("Auto"));
    QCOMPARE(offset()->styleSheet(), kAutoStyle);
    s->strip->setOffset(QStringLiteral("auto"));
    QCOMPARE(offset()->styleSheet(), kConfirmedStyle);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelOffset::acceptedValueIsSent()
{
    QPointer<Dialog_ManualOffset> dialog = openDialog();
    QVERIFY(dialog);
    enter(dialog, QStringLiteral("42.1"));
    QCOMPARE(offset()->text(), QStringLiteral("Auto")); // not before Ok
    QCOMPARE(s->recorder->take(), QStringList());
    press(dialog, "okButton");
    QCOMPARE(s->recorder->take(), QStringList("Signal_SendManualOffset(42.1)"));
    QCOMPARE(offset()->text(), QStringLiteral("42.1"));
    QCOMPARE(offset()->styleSheet(), kSentStyle);
    s->time.turn();
    QVERIFY(!dialog);
    s->strip->setOffset(QStringLiteral("42.1"));
    QCOMPARE(offset()->styleSheet(), kConfirmedStyle);
}

void TstChannelOffset::acceptedAutoIsRedToo()
{
    press(openDialog(), "okButton");
    QCOMPARE(s->recorder->take(), QStringList("Signal_SendManualOffset(Auto)"));
    QCOMPARE(offset()->text(), QStringLiteral("Auto"));
    QCOMPARE(offset()->styleSheet(), kSentStyle);
}

void TstChannelOffset::textIsSentAsEntered_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QString>("text");
    for (const int family : kBridges) {
        QTest::addRow("type %d, beyond the range", family) << family << "123456.789";
        QTest::addRow("type %d, no number", family) << family << "abc";
        QTest::addRow("type %d, umlaut and unit", family) << family << QString::fromUtf8("3 µV/Ω ä");
    }
}

void TstChannelOffset::textIsSentAsEntered()
{
    QFETCH(QString, text);
    auto *bridge = qobject_cast<BridgeChannel_View *>(s->strip);
    std::string sent;
    connect(bridge, &BridgeChannel_View::Signal_SendManualOffset, this,
            [&sent](const std::string &value) { sent = value; });
    Dialog_ManualOffset *dialog = openDialog();
    enter(dialog, QString());
    dialog->findChild<QLineEdit *>()->setText(text);
    press(dialog, "okButton");
    QCOMPARE(QByteArray::fromStdString(sent), text.toUtf8());
    QCOMPARE(offset()->text(), text);
}

void TstChannelOffset::rejectedDialogChangesNothing_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QString>("way");
    for (const int family : kBridges) {
        for (const char *way : {"cancel", "escape", "close"})
            QTest::addRow("type %d, %s", family, way) << family << way;
    }
}

void TstChannelOffset::rejectedDialogChangesNothing()
{
    QFETCH(QString, way);
    s->strip->setOffset(QStringLiteral("1.5"));
    QPointer<Dialog_ManualOffset> dialog = openDialog();
    enter(dialog, QStringLiteral("42.1"));
    if (way == QLatin1String("cancel"))
        press(dialog, "cancelButton");
    else if (way == QLatin1String("escape"))
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        dialog->close();
    s->time.turn();
    QVERIFY(!dialog);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(offset()->text(), QStringLiteral("1.5"));
    QCOMPARE(offset()->styleSheet(), kConfirmedStyle);
    // The next one starts with what is in force.
    QCOMPARE(openDialog()->value(), QStringLiteral("1.5"));
}

void TstChannelOffset::dialogStartsWithWhatIsShown()
{
    Dialog_ManualOffset *dialog = openDialog();
    QCOMPARE(dialog->value(), QStringLiteral("Auto"));
    enter(dialog, QStringLiteral("7"));
    press(dialog, "okButton");
    dialog = nullptr;
    s->time.turn();
    QCOMPARE(openDialog()->value(), QStringLiteral("7"));
    press(s->strip->findChild<Dialog_ManualOffset *>(), "cancelButton");
    s->time.turn();
    s->strip->setOffset(QStringLiteral("8"));
    QCOMPARE(openDialog()->value(), QStringLiteral("8"));
}

void TstChannelOffset::disabledStripOpensNoDialog()
{
    s->strip->disableUpdates();
    QVERIFY(!openDialog());
    QCOMPARE(offset()->styleSheet(), kAutoStyle);
}

void TstChannelOffset::dialogIsModalAndDoesNotBlock()
{
    // openDialog() returned, so there is no event loop inside.
    const Dialog_ManualOffset *dialog = openDialog();
    QVERIFY(dialog->isVisible());
    QVERIFY(dialog->isModal());
    QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
    QCOMPARE(dialog->parent(), s->strip.data());
}

void TstChannelOffset::oneDialogAtATime()
{
    openDialog();
    auto *bridge = qobject_cast<BridgeChannel_View *>(s->strip);
    bridge->on_pushButton_ManualOffset_clicked();
    QCOMPARE(s->strip->findChildren<Dialog_ManualOffset *>().size(), 1);
    // Once it is left, the next click opens another, even in the same turn.
    press(s->strip->findChild<Dialog_ManualOffset *>(), "cancelButton");
    bridge->on_pushButton_ManualOffset_clicked();
    int open = 0;
    for (const Dialog_ManualOffset *each : s->strip->findChildren<Dialog_ManualOffset *>())
        open += each->isVisible() ? 1 : 0;
    QCOMPARE(open, 1);
}

void TstChannelOffset::deletedWithTheDialogOpen()
{
    QPointer<Dialog_ManualOffset> dialog = openDialog();
    enter(dialog, QStringLiteral("9"));
    delete s->strip;
    QVERIFY(!dialog);
    s->time.turn();
    QCOMPARE(s->recorder->take(), QStringList());
}

QTEST_MAIN(TstChannelOffset)
#include "tst_channeloffset.moc"
