#include "help/helpbrowser.h"
#include "help/helpengine.h"
#include "smallmanual.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"

#include <QDesktopServices>
#include <QListView>
#include <QMenu>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QTreeView>
#include <QtTest>
#include <memory>

namespace {

const QString kFirst = QStringLiteral("index.html");
const QString kSecond = QStringLiteral("second.html");
const QString kThird = QStringLiteral("third.html");
constexpr const char *kSchemes[] = {"http", "https", "mailto", "file", "ftp", "other", "qrc"};

/// Index of the item with this text, anywhere in the model.
QModelIndex itemNamed(const QAbstractItemModel &model, const QString &text)
{
    const QModelIndexList found =
        model.match(model.index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.value(0);
}

/// Position in the viewport of the link with this text.
QPoint placeOfLink(HelpBrowser &browser, const QString &text)
{
    QTextCursor cursor = browser.document()->find(text);
    cursor.setPosition(cursor.selectionStart() + 2);
    return browser.cursorRect(cursor).center();
}

} // namespace

/// The window of the manual, worked with by mouse and keys.
class TstHelpEngine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void isAWindowOfItsOwn();
    void hasTabsAtTheLeftAndThePageAtTheRight();
    void controlsHaveNames();
    void opensWithTheFirstPage();
    void showsThePicturesOfAPage();
    void contentsAreUnfolded();
    void contentsLeadToPages_data();
    void contentsLeadToPages();
    void wordOfTheIndexLeadsToItsPage();
    void wordWithSeveralPagesLetsChoose_data();
    void wordWithSeveralPagesLetsChoose();
    void choiceCanBeLeft();
    void linkLeadsToThePlaceInItsPage_data();
    void linkLeadsToThePlaceInItsPage();
    void linkToTheWebOpensInTheSystem_data();
    void linkToTheWebOpensInTheSystem();
    void linkToElsewhereLeavesThePage_data();
    void linkToElsewhereLeavesThePage();
    void keysGoBack_data();
    void keysGoBack();
    void keysGoForward();
    void tabReachesEverything();
    void resourcesComeFromTheCollection();

public slots:
    /// Stands in for the system's browser.
    void openInSystem(const QUrl &url) { m_openedInSystem.append(url); }

private:
    QTreeView *contents() const { return childByName<QTreeView>(m_window.get(), "contentsView"); }
    QListView *index() const { return childByName<QListView>(m_window.get(), "indexView"); }
    QTabWidget *tabs() const { return childByName<QTabWidget>(m_window.get(), "helpTabs"); }
    HelpBrowser *browser() const { return childByName<HelpBrowser>(m_window.get(), "helpBrowser"); }
    QString page() const { return browser()->source().toString(); }
    void choose(const QString &chapter);
    void chooseWord(const QString &word);
    void follow(const QString &link);
    QMenu *openMenu() const { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

    SmallManual m_manual;
    std::unique_ptr<HelpEngine> m_window;
    QList<QUrl> m_openedInSystem;
};

void TstHelpEngine::initTestCase()
{
    QVERIFY(m_manual.build());
}

void TstHelpEngine::init()
{
    m_openedInSystem.clear();
    for (const char *scheme : kSchemes)
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "openInSystem");
    m_window = std::make_unique<HelpEngine>(m_manual.collection());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTRY_COMPARE(contents()->model()->rowCount(), 1);
    QTRY_COMPARE(index()->model()->rowCount(), 2);
}

void TstHelpEngine::cleanup()
{
    for (const char *scheme : kSchemes)
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    m_window.reset();
}

/// Goes to a chapter with the keyboard.
void TstHelpEngine::choose(const QString &chapter)
{
    contents()->setFocus();
    contents()->setCurrentIndex(itemNamed(*contents()->model(), chapter));
    QTest::keyClick(contents(), Qt::Key_Return);
}

/// Clicks on the link with this text.
void TstHelpEngine::follow(const QString &link)
{
    QTest::mouseClick(browser()->viewport(), Qt::LeftButton, Qt::NoModifier, placeOfLink(*browser(), link));
}

void TstHelpEngine::chooseWord(const QString &word)
{
    tabs()->setCurrentWidget(index());
    index()->setFocus();
    index()->setCurrentIndex(itemNamed(*index()->model(), word));
    QTest::keyClick(index(), Qt::Key_Return);
}

void TstHelpEngine::isAWindowOfItsOwn()
{
    QWidget parent;
    const HelpEngine window(m_manual.collection(), &parent);
    QVERIFY(window.isWindow());
    QVERIFY(!window.windowTitle().isEmpty());
    QVERIFY(window.width() >= 600 && window.height() >= 400);
}

void TstHelpEngine::hasTabsAtTheLeftAndThePageAtTheRight()
{
    QCOMPARE(tabs()->count(), 2);
    QCOMPARE(tabs()->tabText(0), QString("Contents"));
    QCOMPARE(tabs()->tabText(1), QString("Index"));
    QCOMPARE(tabs()->widget(0), contents());
    QCOMPARE(tabs()->widget(1), index());
    QCOMPARE(tabs()->maximumWidth(), 200);
    auto *splitter = childByName<QSplitter>(m_window.get(), "helpSplitter");
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QCOMPARE(splitter->indexOf(tabs()), 0);
    QCOMPARE(splitter->indexOf(browser()), 1);
    QVERIFY(browser()->width() > tabs()->width());
}

void TstHelpEngine::controlsHaveNames()
{
    for (const QWidget *control :
         std::initializer_list<const QWidget *>{contents(), index(), tabs(), browser()})
        QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
}

void TstHelpEngine::opensWithTheFirstPage()
{
    QCOMPARE(page(), pageAddress(kFirst));
    QVERIFY(browser()->toPlainText().startsWith("The first page."));
    QVERIFY(browser()->isReadOnly());
}

void TstHelpEngine::showsThePicturesOfAPage()
{
    const QImage shown = browser()->grab().toImage();
    int red = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            red += shown.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
    }
    QCOMPARE(red, 16);
}

void TstHelpEngine::contentsAreUnfolded()
{
    QTRY_VERIFY(contents()->isExpanded(contents()->model()->index(0, 0)));
}

void TstHelpEngine::contentsLeadToPages_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("key") << false;
}

void TstHelpEngine::contentsLeadToPages()
{
    QFETCH(bool, byMouse);
    QTRY_VERIFY(contents()->isExpanded(contents()->model()->index(0, 0)));
    if (byMouse) {
        const QPoint place = contents()->visualRect(itemNamed(*contents()->model(), "Second")).center();
        QTest::mouseClick(contents()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(contents()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    } else {
        contents()->setFocus();
        contents()->setCurrentIndex(contents()->model()->index(0, 0));
        QTest::keyClick(contents(), Qt::Key_Down);
        QTest::keyClick(contents(), Qt::Key_Return);
    }
    QCOMPARE(page(), pageAddress(kSecond));
    QVERIFY(browser()->toPlainText().startsWith("The second page."));
}

void TstHelpEngine::wordOfTheIndexLeadsToItsPage()
{
    chooseWord("one");
    QCOMPARE(page(), pageAddress(kThird));
    QVERIFY(!openMenu());
}

void TstHelpEngine::wordWithSeveralPagesLetsChoose_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("page");
    QTest::newRow("second") << "Second page"
                            << "second.html#end";
    QTest::newRow("third") << "Third page" << kThird;
}

void TstHelpEngine::wordWithSeveralPagesLetsChoose()
{
    QFETCH(QString, title);
    QFETCH(QString, page);
    chooseWord("both");
    QMenu *menu = openMenu();
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(this->page(), pageAddress(kFirst)); // until the user has chosen
    for (int step = 0; step < 2 && menu->activeAction()->text() != title; ++step)
        QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(this->page(), pageAddress(page));
    QVERIFY(!openMenu());
}

void TstHelpEngine::choiceCanBeLeft()
{
    chooseWord("both");
    const QPointer<QMenu> menu = openMenu();
    QVERIFY(menu);
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!menu);
    QCOMPARE(page(), pageAddress(kFirst));
}

void TstHelpEngine::linkLeadsToThePlaceInItsPage_data()
{
    contentsLeadToPages_data();
}

void TstHelpEngine::linkLeadsToThePlaceInItsPage()
{
    QFETCH(bool, byMouse);
    if (byMouse) {
        follow("to the second");
    } else {
        browser()->setFocus();
        QTest::keyClick(browser(), Qt::Key_Tab);
        QTest::keyClick(browser(), Qt::Key_Return);
    }
    QCOMPARE(page(), pageAddress("second.html#end"));
    QVERIFY(browser()->verticalScrollBar()->value() > 0);
}

void TstHelpEngine::linkToTheWebOpensInTheSystem_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<int>("tabs");
    QTest::addColumn<QString>("address");
    const QString page = QStringLiteral("https://manual.example/page");
    QTest::newRow("https, mouse") << "to the web" << 0 << page;
    QTest::newRow("https, key") << "to the web" << 2 << page;
    QTest::newRow("http") << "to the open web" << 0 << "http://manual.example/page";
    QTest::newRow("mail") << "to a person" << 0 << "mailto:help@manual.example";
}

void TstHelpEngine::linkToTheWebOpensInTheSystem()
{
    QFETCH(QString, link);
    QFETCH(int, tabs);
    QFETCH(QString, address);
    const QString before = browser()->toPlainText();
    if (tabs == 0) {
        follow(link);
    } else {
        browser()->setFocus();
        for (int count = 0; count < tabs; ++count)
            QTest::keyClick(browser(), Qt::Key_Tab);
        QTest::keyClick(browser(), Qt::Key_Return);
    }
    QCOMPARE(m_openedInSystem, QList<QUrl>{QUrl(address)});
    QCOMPARE(page(), pageAddress(kFirst));
    QCOMPARE(browser()->toPlainText(), before);
}

void TstHelpEngine::linkToElsewhereLeavesThePage_data()
{
    QTest::addColumn<QString>("link");
    QTest::newRow("page that is missing") << "to nothing";
    QTest::newRow("file") << "to a file";
    QTest::newRow("ftp") << "to a store";
    QTest::newRow("unknown") << "to an unknown place";
    QTest::newRow("resource") << "to a resource";
}

void TstHelpEngine::linkToElsewhereLeavesThePage()
{
    QFETCH(QString, link);
    const QString before = browser()->toPlainText();
    const MessageCatcher log;
    QSignalSpy followed(browser(), &HelpBrowser::anchorClicked);
    follow(link);
    QCOMPARE(followed.size(), 1); // the link was hit
    QCOMPARE(page(), pageAddress(kFirst));
    QCOMPARE(browser()->toPlainText(), before);
    QCOMPARE(m_openedInSystem, QList<QUrl>());
    QCOMPARE(log.lines(), QStringList());
}

void TstHelpEngine::keysGoBack_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    for (const char *place : {"contentsView", "helpBrowser"}) {
        const auto row = [place](const char *key) -> QTestData & {
            return QTest::addRow("%s in %s", key, place) << QString::fromLatin1(place);
        };
        row("alt left") << int(Qt::Key_Left) << Qt::KeyboardModifiers(Qt::AltModifier);
        row("backspace") << int(Qt::Key_Backspace) << Qt::KeyboardModifiers(Qt::NoModifier);
    }
}

void TstHelpEngine::keysGoBack()
{
    QFETCH(QString, from);
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    choose("Second");
    choose("Third");
    QCOMPARE(page(), pageAddress(kThird));
    auto *widget = m_window->findChild<QWidget *>(from);
    widget->setFocus();
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(page(), pageAddress(kSecond)); // one step only
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(page(), pageAddress(kFirst));
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(page(), pageAddress(kFirst)); // there is nothing before it
}

void TstHelpEngine::keysGoForward()
{
    choose("Second");
    QTest::keyClick(contents(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(page(), pageAddress(kFirst));
    QTest::keyClick(contents(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(page(), pageAddress(kSecond));
}

void TstHelpEngine::tabReachesEverything()
{
    choose("Third"); // without links, which Tab would visit
    QStringList names;
    for (int step = 0; step < 4; ++step) {
        names.append(m_window->focusWidget()->objectName());
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(names, QStringList({"contentsView", "helpBrowser", "qt_tabwidget_tabbar", "contentsView"}));
}

void TstHelpEngine::resourcesComeFromTheCollection()
{
    QFile picture(m_manual.folder.filePath("dot.png"));
    QVERIFY(picture.open(QIODevice::ReadOnly));
    const QByteArray bytes = picture.readAll();
    const auto load = [this](const QUrl &url) {
        return browser()->loadResource(QTextDocument::ImageResource, url).toByteArray();
    };
    QCOMPARE(load(QUrl(pageAddress("dot.png"))), bytes);
    QCOMPARE(load(QUrl::fromLocalFile(picture.fileName())), bytes); // as any text browser
    QCOMPARE(load(QUrl(pageAddress("missing.png"))), QByteArray());
}

QTEST_MAIN(TstHelpEngine)

#include "tst_helpengine.moc"
