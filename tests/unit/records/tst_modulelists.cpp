#include "protocol/records/modulelists.h"

#include <QtTest>

/// Lists of a module: what its two channels offer.
class TstModuleLists : public QObject
{
    Q_OBJECT

private slots:
    void itemsOfAList_data();
    void itemsOfAList();
    void listsOfBothChannels_data();
    void listsOfBothChannels();
    void textsOfBothChannels_data();
    void textsOfBothChannels();
};

void TstModuleLists::itemsOfAList_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("two entries") << "350 Full$120 Half$" << QStringList{"350 Full", "120 Half"};
    QTest::newRow("one entry") << "±10$" << QStringList{"±10"};
    QTest::newRow("empty text") << "" << QStringList();
    QTest::newRow("no end mark") << "350 Full" << QStringList();
    QTest::newRow("last entry without its end mark") << "a$b" << QStringList{"a"};
    QTest::newRow("empty entries stay") << "a$$b$" << QStringList{"a", "", "b"};
    QTest::newRow("blanks stay") << " a $ $" << QStringList{" a ", " "};
    QTest::newRow("nothing but an end mark") << "$" << QStringList{""};
}

void TstModuleLists::itemsOfAList()
{
    QFETCH(QString, text);
    QTEST(moduleListItems(text), "items");
}

void TstModuleLists::listsOfBothChannels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("a");
    QTest::addColumn<QStringList>("b");
    QTest::newRow("two lists") << "a$b$#c$" << QStringList{"a", "b"} << QStringList{"c"};
    QTest::newRow("one list for both") << "a$b$" << QStringList{"a", "b"} << QStringList{"a", "b"};
    QTest::newRow("empty text") << "" << QStringList() << QStringList();
    QTest::newRow("A has none") << "#c$" << QStringList() << QStringList{"c"};
    QTest::newRow("B has none") << "a$#" << QStringList{"a"} << QStringList();
    QTest::newRow("three parts are one list")
        << "a$#b$#c$" << QStringList{"a", "#b", "#c"} << QStringList{"a", "#b", "#c"};
    QTest::newRow("no end marks") << "a#b" << QStringList() << QStringList();
}

void TstModuleLists::listsOfBothChannels()
{
    QFETCH(QString, text);
    const ChannelLists lists = channelLists(text);
    QTEST(lists.a, "a");
    QTEST(lists.b, "b");
}

void TstModuleLists::textsOfBothChannels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("two texts") << "a$b$#c$"
                               << "a$b$"
                               << "c$";
    QTest::newRow("one text for both") << "a$b$"
                                       << "a$b$"
                                       << "a$b$";
    QTest::newRow("empty text") << ""
                                << ""
                                << "";
    QTest::newRow("three parts are one text") << "a$#b$#c$"
                                              << "a$#b$#c$"
                                              << "a$#b$#c$";
    QTest::newRow("what no end mark closes stays") << "a$x#y"
                                                   << "a$x"
                                                   << "y";
}

void TstModuleLists::textsOfBothChannels()
{
    QFETCH(QString, text);
    const ChannelTexts texts = channelListTexts(text);
    QTEST(texts.a, "a");
    QTEST(texts.b, "b");
}

QTEST_GUILESS_MAIN(TstModuleLists)
#include "tst_modulelists.moc"
