#include "base/gui/dialogs.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

class TstDialogs : public QObject
{
    Q_OBJECT

private slots:
    void flagsGiveACloseButtonOnly();
    void modalDialogKeepsFromAllWindows();
    void modalDialogIsKeptAndCanBeShownAgain();
    void dialogOfOneTimeDeletesItself_data();
    void dialogOfOneTimeDeletesItself();
    void parentMayGoWhileADialogIsOpen();
};

void TstDialogs::flagsGiveACloseButtonOnly()
{
    const QDialog dialog(nullptr, dialogFlags());
    const QDialog like(nullptr,
                       Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(dialog.windowFlags(), like.windowFlags());
    QMessageBox box;
    box.setWindowFlags(dialogFlags());
    QCOMPARE(box.windowFlags(), like.windowFlags());
}

void TstDialogs::modalDialogKeepsFromAllWindows()
{
    QWidget window;
    window.show();
    QWidget other;
    other.show();
    QDialog dialog(&window);
    showModal(dialog); // returns
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
    QCOMPARE(QApplication::activeModalWidget(), &dialog);
}

void TstDialogs::modalDialogIsKeptAndCanBeShownAgain()
{
    const QPointer<QDialog> dialog(new QDialog);
    const QSignalSpy rejected(dialog, &QDialog::rejected);
    for (int time = 1; time <= 2; ++time) {
        showModal(*dialog);
        QVERIFY(dialog->isVisible());
        dialog->reject();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialog);
        QCOMPARE(rejected.count(), time);
    }
    delete dialog;
}

void TstDialogs::dialogOfOneTimeDeletesItself_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"accept", "reject", "close"})
        QTest::newRow(way) << way;
}

void TstDialogs::dialogOfOneTimeDeletesItself()
{
    QFETCH(QString, way);
    const QPointer<QDialog> dialog(new QDialog);
    showModalOnce(*dialog);
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
    const QSignalSpy finished(dialog, &QDialog::finished);
    if (way == QLatin1String("accept"))
        dialog->accept();
    else if (way == QLatin1String("reject"))
        dialog->reject();
    else
        dialog->close();
    QCOMPARE(finished.count(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!dialog);
}

void TstDialogs::parentMayGoWhileADialogIsOpen()
{
    auto window = std::make_unique<QWidget>();
    window->show();
    const QPointer<QDialog> dialog(new QDialog(window.get()));
    showModalOnce(*dialog);
    const QSignalSpy finished(dialog, &QDialog::finished);
    window.reset();
    QVERIFY(!dialog);
    QCOMPARE(finished.count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(TstDialogs)
#include "tst_dialogs.moc"
