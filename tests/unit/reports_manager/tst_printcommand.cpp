#include "reportmanagerfixture.h"

#include "support/pdfreader.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QtTest>

/// The command that prints a module's line.
class TstPrintCommand : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void dialogAsksForThePrinter();
    void cancelledDialogPrintsNothing();
    void acceptedDialogPrintsOnePageAcross();
    void lineIsThatOfTheMomentOfPrinting();
    void dialogGoesWithTheManager();

private:
    /// Prints to a file with the dialog that is open.
    void printToFile(const QString &path);
    QPrintDialog &printDialog() const { return *childByName<QPrintDialog>(&report(), "printDialog"); }
};

void TstPrintCommand::dialogAsksForThePrinter()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().printSens(1);
    QVERIFY(printDialog().isVisible());
    QVERIFY(printDialog().isModal());
    QCOMPARE(printDialog().windowTitle(), QStringLiteral("Print Document"));
    QCOMPARE(printDialog().printer()->pageLayout().orientation(), QPageLayout::Landscape);
    QCOMPARE(printDialog().printer()->resolution(), QPrinter(QPrinter::ScreenResolution).resolution());
    QCOMPARE(m_events, QStringList());
    QCOMPARE(files(), QStringList());
}

void TstPrintCommand::cancelledDialogPrintsNothing()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().printSens(1);
    printDialog().printer()->setOutputFileName(folder() + QStringLiteral("/p.pdf"));
    QTest::keyClick(&printDialog(), Qt::Key_Escape);
    m_time->turn();
    QCOMPARE(report().findChildren<QPrintDialog *>().size(), 0);
    QCOMPARE(files(), QStringList());
    QCOMPARE(m_events, QStringList());
}

void TstPrintCommand::printToFile(const QString &path)
{
    auto *printers = childByName<QComboBox>(&printDialog(), "printers");
    printers->setCurrentText(QStringLiteral("Print to File (PDF)")); // even if the machine has a printer
    QCOMPARE(printers->currentText(), QStringLiteral("Print to File (PDF)"));
    auto *name = childByName<QLineEdit>(&printDialog(), "filename");
    name->setText(path);
    QTest::keyClick(&printDialog(), Qt::Key_Return);
    m_time->turn();
}

void TstPrintCommand::acceptedDialogPrintsOnePageAcross()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().printSens(1);
    const QString path = folder() + QStringLiteral("/p.pdf");
    printToFile(path);
    const QByteArray bytes = readFile(path);
    QVERIFY2(bytes.startsWith("%PDF-"), bytes.left(20));
    QVERIFY2(bytes.contains("/Count 1\n"), "one page");
    const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([0-9]+)[0-9.]* ([0-9]+)"));
    const QRegularExpressionMatch match = box.match(QString::fromLatin1(bytes.constData(), bytes.size()));
    QVERIFY(match.hasMatch());
    QVERIFY(match.captured(1).toInt() > match.captured(2).toInt());
    QCOMPARE(report().findChildren<QPrintDialog *>().size(), 0);
    QCOMPARE(critical(), QStringList());
}

/// The chain goes and another one comes while the printer is chosen.
void TstPrintCommand::lineIsThatOfTheMomentOfPrinting()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().printSens(1);
    m_manager->clearList();
    Module_Status other = reportrecords::oneListModule(1, 1);
    other.serialNumber = QStringLiteral("OTHER-7");
    fileModule(other);
    const QString path = folder() + QStringLiteral("/p.pdf");
    printToFile(path);
    const QString text = pdfreader::text(path);
    QVERIFY2(text.contains(QStringLiteral("OTHER-7")), qPrintable(text));
}

void TstPrintCommand::dialogGoesWithTheManager()
{
    emit report().printSens(0);
    const QPointer<QPrintDialog> dialog(&printDialog());
    m_manager.reset();
    QVERIFY(dialog.isNull());
    QCOMPARE(files(), QStringList());
}

QTEST_MAIN(TstPrintCommand)
#include "tst_printcommand.moc"
