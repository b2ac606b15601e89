#include "dialogbook.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QtTest>

using namespace storm;

/// The book knows what it is to count, and notices what it does not know.
class TstStormDialogs : public QObject
{
    Q_OBJECT

private slots:
    void aDialogIsMissingUntilItWasLeftInAllWays();
    void aDialogThatGoesByItselfWasNotLeft();
    void aDialogThatRefusedToGoWasNotLeft();
    void aDialogThatNobodyKnowsIsAStranger();
    void whatTheLibraryOpensIsNoStranger();
};

void TstStormDialogs::aDialogIsMissingUntilItWasLeftInAllWays()
{
    DialogBook book;
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("versionBox"));
    const DialogKind *kind = dialogKind(QStringLiteral("versionBox"));
    QVERIFY(kind);
    QCOMPARE(book.missing().size(), dialogKinds().size());
    QVector<Way> missing = kind->ways;
    for (const Way way : kind->ways) {
        QCOMPARE(book.missingWays(*kind), missing);
        dialog.show();
        book.expectLeave(&dialog, way);
        dialog.hide();
        missing.removeOne(way);
    }
    QCOMPARE(book.missingWays(*kind), QVector<Way>());
    QVERIFY(!book.missing().contains(QStringLiteral("versionBox")));
    QCOMPARE(book.openings(), kind->ways.size());
}

void TstStormDialogs::aDialogThatGoesByItselfWasNotLeft()
{
    DialogBook book;
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("versionBox"));
    const DialogKind *kind = dialogKind(QStringLiteral("versionBox"));
    dialog.show();
    dialog.hide();
    QCOMPARE(book.missingWays(*kind), kind->ways);
}

void TstStormDialogs::aDialogThatRefusedToGoWasNotLeft()
{
    DialogBook book;
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("versionBox"));
    const DialogKind *kind = dialogKind(QStringLiteral("versionBox"));
    QVERIFY(kind);
    dialog.show();
    book.expectLeave(&dialog, Way::Close);
    book.forgetLeave();
    dialog.hide(); // with its row
    QCOMPARE(book.missingWays(*kind), kind->ways);
    dialog.show();
    book.expectLeave(&dialog, Way::Close);
    dialog.hide();
    QVERIFY(!book.missingWays(*kind).contains(Way::Close));
}

void TstStormDialogs::aDialogThatNobodyKnowsIsAStranger()
{
    DialogBook book;
    QDialog known;
    known.setObjectName(QStringLiteral("versionBox"));
    known.show();
    QCOMPARE(book.strangers(), QStringList());
    QDialog unknown;
    unknown.setObjectName(QStringLiteral("surpriseBox"));
    QMessageBox nameless(&known);
    for (int i = 0; i < 2; ++i) {
        unknown.show();
        unknown.hide();
        nameless.show();
        nameless.hide();
    }
    QCOMPARE(book.strangers(), (QStringList{"surpriseBox", "QMessageBox"}));
    QCOMPARE(book.report().filter("nobody knows it").size(), 2);
}

void TstStormDialogs::whatTheLibraryOpensIsNoStranger()
{
    DialogBook book;
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.setObjectName(QStringLiteral("saveDialog"));
    files.show();
    QMessageBox question(&files);
    question.show();
    QDialog second(&question);
    second.show();
    QCOMPARE(book.strangers(), QStringList());
    QCOMPARE(book.openings(), 3);
}

QTEST_MAIN(TstStormDialogs)

#include "tst_stormdialogs.moc"
