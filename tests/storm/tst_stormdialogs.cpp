#include "dialogbook.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QtTest>
#include <memory>

using namespace storm;

/// The book knows what it is to count, and notices what it does not know.
class TstStormDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aDialogIsMissingUntilItWasLeftInAllWays();
    void aDialogThatGoesByItselfWasNotLeft();
    void aDialogThatRefusedToGoWasNotLeft();
    void aDialogThatNobodyKnowsIsAStranger();
    void whatTheLibraryOpensIsNoStranger();

private:
    std::unique_ptr<DialogBook> m_book;
    std::unique_ptr<QDialog> m_dialog; ///< one that the book knows
    const DialogKind *m_kind = nullptr;
};

void TstStormDialogs::init()
{
    const QString name = QStringLiteral("versionBox");
    m_book = std::make_unique<DialogBook>();
    m_dialog = std::make_unique<QDialog>();
    m_dialog->setObjectName(name);
    m_kind = dialogKind(name);
    QVERIFY(m_kind);
}

void TstStormDialogs::cleanup()
{
    m_dialog.reset();
    m_book.reset();
}

void TstStormDialogs::aDialogIsMissingUntilItWasLeftInAllWays()
{
    QCOMPARE(m_book->missing().size(), dialogKinds().size());
    QVector<Way> missing = m_kind->ways;
    for (const Way way : m_kind->ways) {
        QCOMPARE(m_book->missingWays(*m_kind), missing);
        m_dialog->show();
        m_book->expectLeave(m_dialog.get(), way);
        m_dialog->hide();
        missing.removeOne(way);
    }
    QCOMPARE(m_book->missingWays(*m_kind), QVector<Way>());
    QVERIFY(!m_book->missing().contains(QStringLiteral("versionBox")));
    QCOMPARE(m_book->openings(), m_kind->ways.size());
}

void TstStormDialogs::aDialogThatGoesByItselfWasNotLeft()
{
    m_dialog->show();
    m_dialog->hide();
    QCOMPARE(m_book->missingWays(*m_kind), m_kind->ways);
}

void TstStormDialogs::aDialogThatRefusedToGoWasNotLeft()
{
    m_dialog->show();
    m_book->expectLeave(m_dialog.get(), Way::Close);
    m_book->forgetLeave();
    m_dialog->hide(); // with its row
    QCOMPARE(m_book->missingWays(*m_kind), m_kind->ways);
    m_dialog->show();
    m_book->expectLeave(m_dialog.get(), Way::Close);
    m_dialog->hide();
    QVERIFY(!m_book->missingWays(*m_kind).contains(Way::Close));
}

void TstStormDialogs::aDialogThatNobodyKnowsIsAStranger()
{
    m_dialog->show();
    QCOMPARE(m_book->strangers(), QStringList());
    QDialog unknown;
    unknown.setObjectName(QStringLiteral("surpriseBox"));
    QMessageBox nameless(m_dialog.get());
    for (int i = 0; i < 2; ++i) {
        unknown.show();
        unknown.hide();
        nameless.show();
        nameless.hide();
    }
    QCOMPARE(m_book->strangers(), (QStringList{"surpriseBox", "QMessageBox"}));
    QCOMPARE(m_book->report().filter("nobody knows it").size(), 2);
}

void TstStormDialogs::whatTheLibraryOpensIsNoStranger()
{
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.setObjectName(QStringLiteral("saveDialog"));
    files.show();
    QMessageBox question(&files);
    question.show();
    QDialog second(&question);
    second.show();
    QCOMPARE(m_book->strangers(), QStringList());
    QCOMPARE(m_book->openings(), 3);
}

QTEST_MAIN(TstStormDialogs)

#include "tst_stormdialogs.moc"
