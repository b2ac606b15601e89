#include "reportmanagerfixture.h"

#include "support/windowacts.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

/// What becomes of the operator's choice on its way from the button to the file: the marks in the table, the
/// name that was typed, and windows that come and go meanwhile.
class TstSaveChoice : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void marksAreThoseOfTheButton_data();
    void marksAreThoseOfTheButton();
    void spreadsheetKeepsTheModulesOfALostChain();
    void suffixStandsBehindANameWithPoints_data();
    void suffixStandsBehindANameWithPoints();
    void earlierFileBehindTheSuffixIsReplacedOnRequest_data();
    void earlierFileBehindTheSuffixIsReplacedOnRequest();
    void fileDialogIsGoneWhenTheReportIsMade();
    void onlyFilesAreOffered();
    void heldReturnLeavesTheBoxAlone();

private:
    void writeEarlierFile(const QString &path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("earlier"), qint64(7));
    }
    QString loggedPage() const
    {
        return m_log->lines(QtDebugMsg).filter(QStringLiteral("HTML DOC")).value(0);
    }
};

void TstSaveChoice::marksAreThoseOfTheButton_data()
{
    QTest::addColumn<bool>("comesBack");
    QTest::newRow("the chain goes") << false;
    QTest::newRow("the chain goes and comes back") << true;
}

void TstSaveChoice::marksAreThoseOfTheButton()
{
    QFETCH(bool, comesBack);
    const QVector<Module_Status> modules{reportrecords::module(1, 1), reportrecords::module(2, 2),
                                         reportrecords::module(3, 4)};
    fill(modules);
    report().findChild<QAbstractItemModel *>()->setData(
        report().findChild<QAbstractItemModel *>()->index(2, 0), Qt::Unchecked, Qt::CheckStateRole);
    QVERIFY(!report().isSelected(2));
    emit report().saveAllPdf();
    m_manager->clearList();
    for (const Module_Status &module : modules) {
        if (comesBack)
            fileModule(module);
    }
    saveAs(folder() + QStringLiteral("/r.pdf"));
    QVERIFY2(loggedPage().contains(QStringLiteral("<td>0</td>")), qPrintable(loggedPage()));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>1</td>")));
    QVERIFY(!loggedPage().contains(QStringLiteral("<td>2</td>")));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>3</td>")));
}

void TstSaveChoice::spreadsheetKeepsTheModulesOfALostChain()
{
    const QString path = folder() + QStringLiteral("/r.xlsx");
    fill({reportrecords::module(1, 1), reportrecords::module(2, 2)});
    emit report().saveCSV();
    saveAs(path);
    const qint64 whole = QFileInfo(path).size();
    QFile::remove(path);
    emit report().saveCSV();
    m_manager->clearList();
    saveAs(path);
    QCOMPARE(QFileInfo(path).size(), whole);
}

void TstSaveChoice::suffixStandsBehindANameWithPoints_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    QTest::newRow("no point") << "mine"
                              << "mine.pdf";
    QTest::newRow("version") << "Bericht 1.2"
                             << "Bericht 1.2.pdf";
    QTest::newRow("point at the end") << "mine."
                                      << "mine..pdf";
    QTest::newRow("the suffix") << "v1.2.pdf"
                                << "v1.2.pdf";
    QTest::newRow("the suffix in capitals") << "v1.2.PDF"
                                            << "v1.2.PDF";
}

void TstSaveChoice::suffixStandsBehindANameWithPoints()
{
    QFETCH(QString, typed);
    QFETCH(QString, saved);
    fill({reportrecords::module(1, 1)});
    m_manager->setPath(folder());
    emit report().savePDF(1);
    saveAs(typed);
    QCOMPARE(files(), QStringList{saved});
    QCOMPARE(m_events.last(), "DefltLctn|" + folder());
    QCOMPARE(m_events.at(1), "open|" + folder() + '/' + saved);
}

void TstSaveChoice::earlierFileBehindTheSuffixIsReplacedOnRequest_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("no") << "refusalButton" << false;
    QTest::newRow("yes") << "proceedButton" << true;
}

void TstSaveChoice::earlierFileBehindTheSuffixIsReplacedOnRequest()
{
    QFETCH(QString, button);
    QFETCH(bool, isReplaced);
    const QString path = folder() + QStringLiteral("/v1.2.pdf");
    writeEarlierFile(path);
    fill({reportrecords::module(1, 1)});
    m_manager->setPath(folder());
    emit report().savePDF(1);
    saveAs(QStringLiteral("v1.2"));
    auto *box = childByName<QMessageBox>(&report(), "replaceBox");
    QVERIFY(box->isVisible());
    QVERIFY2(box->text().contains(QStringLiteral("v1.2.pdf")), qPrintable(box->text()));
    QCOMPARE(readFile(path), QByteArray("earlier"));
    QTest::mouseClick(box->findChild<QPushButton *>(button), Qt::LeftButton);
    QCOMPARE(readFile(path) != QByteArray("earlier"), isReplaced);
    QCOMPARE(m_events.contains("DefltLctn|" + folder()), isReplaced);
}

void TstSaveChoice::fileDialogIsGoneWhenTheReportIsMade()
{
    fill({reportrecords::module(1, 1)});
    int windows = -1;
    connect(m_manager.get(), &ModuleConfigurationManager::DefltLctn, this,
            [&] { windows = openWindows<QFileDialog>(); });
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/r.pdf"));
    QCOMPARE(windows, 0);
}

void TstSaveChoice::onlyFilesAreOffered()
{
    emit report().saveAllPdf();
    QCOMPARE(saveDialog().supportedSchemes(), QStringList{"file"});
}

void TstSaveChoice::heldReturnLeavesTheBoxAlone()
{
    m_manager->displaySystemReport();
    emit report().saveCSV(); // nothing is stored
    saveAs(folder() + QStringLiteral("/r.xlsx"));
    auto *box = childByName<QMessageBox>(&report(), "notSavedBox");
    QVERIFY(QTest::qWaitForWindowActive(box));
    windowacts::repeatKey(Qt::Key_Return);
    QVERIFY(box->isVisible());
    QTest::keyClick(box, Qt::Key_Return);
    m_time->turn();
    QCOMPARE(openWindows<QMessageBox>(), 0);
}

QTEST_MAIN(TstSaveChoice)
#include "tst_savechoice.moc"
