#include "reports/textviewer.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QUrl>
#include <QtTest>

/// Takes the place of the desktop's viewer.
class Viewer : public QObject
{
    Q_OBJECT

public:
    Viewer() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened << url; }
};

class TstTextViewer : public QObject
{
    Q_OBJECT

private slots:
    void showsTheFile_data();
    void showsTheFile();
    void aDesktopWithoutAViewerIsTold();
};

void TstTextViewer::showsTheFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/home/user/Desktop/temp.txt";
    QTest::newRow("with blanks and signs") << QString::fromUtf8("/home/üser #1/100% ?/temp.txt");
}

void TstTextViewer::showsTheFile()
{
    QFETCH(QString, path);
    const Viewer viewer;
    QObject owner;
    showTextFile(path, &owner);
    QCOMPARE(viewer.opened.size(), 1);
    QVERIFY(viewer.opened.first().isLocalFile());
    QCOMPARE(viewer.opened.first().toLocalFile(), path);
}

void TstTextViewer::aDesktopWithoutAViewerIsTold()
{
    // Offscreen there is no desktop that could open anything.
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral(
                                            " : No program shows \"/home/user/Desktop/temp[.]txt\"$")));
    QObject owner;
    showTextFile(QStringLiteral("/home/user/Desktop/temp.txt"), &owner);
}

QTEST_MAIN(TstTextViewer)
#include "tst_textviewer.moc"
