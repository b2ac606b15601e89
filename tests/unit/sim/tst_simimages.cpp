#include "simdevicefixture.h"

#include "sim/imagefolder.h"

#include <QTemporaryDir>
#include <QtTest>

using sim::FpgaTarget;

namespace {

constexpr FpgaTarget kAnalog2{1, 2};

// Commands for the second FPGA of the analog modules.
const char kStart[] = "160102010100000000";
const char kStop[] = "160102010000000000";
const char kErase0[] = "16010201e000000000";
const char kErase1[] = "16010201e001000000";
const char kReset[] = "2b000000000000";

QByteArray littleEndian(int number)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(number & 0xFF));
    bytes.append(static_cast<char>(number >> 8));
    return bytes;
}

QByteArray block(int number, const QByteArray &data, int length = 256)
{
    return QByteArray::fromHex("16010201e1") + littleEndian(number) + littleEndian(length) + data;
}

QByteArray filled(char with)
{
    return QByteArray(256, with);
}

} // namespace

/// What the FPGA commands leave in the flash memories, and which of them depart from the rules.
class TstSimImages : public SimDeviceFixture
{
    Q_OBJECT

private slots:
    void init() { describe(smallChain()); }

    void runStoresItsBlocks();
    void blocksOfTheSecondPage();
    void eachTargetHasItsFlash();
    void runWithoutBlocksLeavesNothing();
    void shorterImageReplacesALongerOne();
    void resetKeepsTheImageAndEndsTheRun();
    void newStartEndsTheRunBefore();
    void imageThatFillsAllBlocksErasesOnePageMore();
    void programmingOnlyClearsBits();
    void pageThatWasNeverErasedHoldsZeros();
    void breachIsToldAndAcknowledged_data();
    void breachIsToldAndAcknowledged();
    void breachesOfOneCommandAreToldTogether();
    void blockOfAnotherSizeIsNotStored_data();
    void blockOfAnotherSizeIsNotStored();
    void breachesAreCountedBeyondThoseRemembered();
    void stopHandsTheImageOver();
    void stopWithoutARunHandsNothingOver();
    void logTellsStartAndStopOnly();
    void names_data();
    void names();
    void folderGetsAFilePerTarget();
    void folderThatCannotBeMade();
    void fileThatCannotBeWritten();

private:
    const sim::FpgaImages &images() const { return m_device->images(); }
    QString note(const QByteArray &payload) { return m_device->answer(payload, sim::Milliseconds(0)).note; }
    void send(const QList<QByteArray> &payloads)
    {
        for (const QByteArray &payload : payloads)
            QCOMPARE(ask(payload).size(), 16);
    }
    void sendHex(const QByteArrayList &payloads)
    {
        for (const QByteArray &payload : payloads)
            send({QByteArray::fromHex(payload)});
    }
};

void TstSimImages::runStoresItsBlocks()
{
    sendHex({kStart, kErase0});
    QVERIFY(images().isRunning(kAnalog2));
    send({block(0, filled('a')), block(1, filled('b'))});
    sendHex({kStop});
    QCOMPARE(images().image(kAnalog2), filled('a') + filled('b'));
    QCOMPARE(images().breaches(), QStringList());
    QVERIFY(!images().isRunning(kAnalog2));
    QCOMPARE(images().finishedRuns(kAnalog2), 1);
}

void TstSimImages::blocksOfTheSecondPage()
{
    sendHex({kStart, kErase0, kErase1});
    for (int i = 0; i < 258; ++i)
        send({block(i, filled(static_cast<char>(i)))});
    sendHex({kStop});
    const QByteArray image = images().image(kAnalog2);
    QCOMPARE(image.size(), 258 * 256);
    QCOMPARE(image.at(255 * 256), '\xFF');
    QCOMPARE(image.at(256 * 256), '\0');
    QCOMPARE(image.at(258 * 256 - 1), '\1');
    QCOMPARE(images().breaches(), QStringList());
}

void TstSimImages::eachTargetHasItsFlash()
{
    sendHex({kStart, kErase0, "160001010100000000", "16000101e000000000"});
    send({block(0, filled('a')), hex("16000101e100000001") + filled('c')});
    sendHex({kStop, "160001010000000000"});
    QCOMPARE(images().image(kAnalog2), filled('a'));
    QCOMPARE(images().image({0, 1}), filled('c'));
    QCOMPARE(images().image({1, 1}), QByteArray());
    QCOMPARE(images().breaches(), QStringList());
}

void TstSimImages::runWithoutBlocksLeavesNothing()
{
    sendHex({kStart, kErase0, kStop});
    QCOMPARE(images().image(kAnalog2), QByteArray());
    QCOMPARE(images().finishedRuns(kAnalog2), 1);
    QCOMPARE(images().breaches(), QStringList());
}

void TstSimImages::shorterImageReplacesALongerOne()
{
    sendHex({kStart, kErase0});
    send({block(0, filled('a')), block(1, filled('b'))});
    sendHex({kStop, kStart, kErase0});
    send({block(0, filled('c'))});
    sendHex({kStop});
    QCOMPARE(images().image(kAnalog2), filled('c'));
    QCOMPARE(images().finishedRuns(kAnalog2), 2);
    QCOMPARE(images().breaches(), QStringList());
}

void TstSimImages::resetKeepsTheImageAndEndsTheRun()
{
    sendHex({kStart, kErase0});
    send({block(0, filled('a'))});
    sendHex({kReset});
    QCOMPARE(images().image(kAnalog2), filled('a'));
    QVERIFY(!images().isRunning(kAnalog2));
    QCOMPARE(images().finishedRuns(kAnalog2), 0);
    QCOMPARE(images().breaches(), QStringList());
    send({block(1, filled('b'))});
    QCOMPARE(images().breaches(), QStringList{"analog-fpga2: block 1 without a start"});
}

void TstSimImages::newStartEndsTheRunBefore()
{
    sendHex({kStart, kErase0});
    send({block(0, filled('a'))});
    QCOMPARE(note(hex(kStart)),
             QString("analog-fpga2: a new start ends the run before; analog-fpga2: flashing started"));
    QCOMPARE(images().image(kAnalog2), QByteArray());
    sendHex({kErase0});
    send({block(0, filled('b'))});
    QCOMPARE(images().image(kAnalog2), filled('b'));
    QCOMPARE(images().breaches(), QStringList());
}

void TstSimImages::imageThatFillsAllBlocksErasesOnePageMore()
{
    sendHex({kStart});
    for (int page = 0; page <= 256; ++page)
        send({hex("16010201e0") + littleEndian(page) + hex("0000")});
    QCOMPARE(images().breaches(), QStringList());
    send({hex("16010201e001010000")});
    QCOMPARE(images().breaches(), QStringList{"analog-fpga2: there is no page 257"});
}

void TstSimImages::programmingOnlyClearsBits()
{
    sendHex({kStart, kErase0});
    send({block(0, filled('\x0F')), block(0, filled('\x3C'))});
    QCOMPARE(images().image(kAnalog2), filled('\x0C'));
    QCOMPARE(images().breaches(),
             (QStringList{"analog-fpga2: block 0, expected 1", "analog-fpga2: block 0 is not erased"}));
}

void TstSimImages::pageThatWasNeverErasedHoldsZeros()
{
    sendHex({kStart});
    send({block(0, filled('a'))});
    QCOMPARE(images().image(kAnalog2), filled('\0'));
    QCOMPARE(images().breaches(), QStringList{"analog-fpga2: block 0 is not erased"});
}

void TstSimImages::breachIsToldAndAcknowledged_data()
{
    QTest::addColumn<QList<QByteArray>>("before");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");

    const QList<QByteArray> none;
    const QList<QByteArray> started{hex(kStart)};
    const QList<QByteArray> erased{hex(kStart), hex(kErase0)};
    QTest::newRow("stop without a start") << none << hex(kStop) << "analog-fpga2: stop without a start";
    QTest::newRow("second stop") << QList<QByteArray>{hex(kStart), hex(kStop)} << hex(kStop)
                                 << "analog-fpga2: stop without a start";
    QTest::newRow("erasing without a start")
        << none << hex(kErase0) << "analog-fpga2: erasing page 0 without a start";
    QTest::newRow("first page left out")
        << started << hex(kErase1) << "analog-fpga2: erasing page 1, expected 0";
    QTest::newRow("page erased twice")
        << erased << hex(kErase0) << "analog-fpga2: erasing page 0, expected 1";
    QTest::newRow("page erased behind a block")
        << QList<QByteArray>{hex(kStart), hex(kErase0), block(0, filled('a'))} << hex(kErase1)
        << "analog-fpga2: erasing page 1 behind a block";
    QTest::newRow("erasing with a second number")
        << started << hex("16010201e000000001") << "analog-fpga2: erasing page 0 with the number 256";
    QTest::newRow("erasing with data")
        << started << hex("16010201e000000000ff") << "analog-fpga2: erasing page 0 with 1 bytes of data";
    QTest::newRow("first block left out")
        << erased << block(1, filled('a')) << "analog-fpga2: block 1, expected 0";
    QTest::newRow("block of a page that was not erased")
        << started << block(0, filled('a')) << "analog-fpga2: block 0 is not erased";
    QTest::newRow("length field of a short block")
        << erased << block(0, filled('a'), 232) << "analog-fpga2: block 0 with the length 232";
    QTest::newRow("start with a number")
        << none << hex("160102010105000000") << "analog-fpga2: start with the numbers 5 and 0";
    QTest::newRow("start with data") << none << hex("160102010100000000ffff")
                                     << "analog-fpga2: start with 2 bytes of data";
    QTest::newRow("stop with a second number")
        << started << hex("160102010000000001") << "analog-fpga2: stop with the numbers 0 and 256";
    QTest::newRow("stop with data") << started << hex("160102010000000000ff")
                                    << "analog-fpga2: stop with 1 bytes of data";
    QTest::newRow("unknown command") << erased << hex("160102012b00000000")
                                     << "analog-fpga2: no such command: 0x2b";
    QTest::newRow("unknown module") << none << hex("160302010100000000") << "3-fpga2: no such target";
    QTest::newRow("FPGA 0") << none << hex("160100010100000000") << "analog-fpga0: no such target";
    QTest::newRow("FPGA 3") << none << hex("160103010100000000") << "analog-fpga3: no such target";
    QTest::newRow("third byte") << none << hex("160102020100000000")
                                << "analog-fpga2: third byte 2 in place of 1";
}

void TstSimImages::breachIsToldAndAcknowledged()
{
    QFETCH(QList<QByteArray>, before);
    QFETCH(QByteArray, payload);
    QFETCH(QString, text);
    send(before);
    QCOMPARE(images().breaches(), QStringList());
    const sim::Answer answer = m_device->answer(payload, sim::Milliseconds(0));
    QCOMPARE(answer.verdict, sim::Answer::Verdict::Reply);
    QCOMPARE(answer.payload.at(0), '\x08');
    QCOMPARE(images().breaches(), QStringList{text});
    QCOMPARE(images().breachCount(), 1);
    QVERIFY2(answer.note.contains(QString(text).insert(text.indexOf(':'), ": breach")),
             qPrintable(answer.note));
}

void TstSimImages::breachesOfOneCommandAreToldTogether()
{
    QCOMPARE(note(block(7, filled('a'), 255)), QString("analog-fpga2: breach: block 7 without a start; "
                                                       "analog-fpga2: breach: block 7, expected 0; "
                                                       "analog-fpga2: breach: block 7 with the length 255; "
                                                       "analog-fpga2: breach: block 7 is not erased"));
    QCOMPARE(images().breachCount(), 4);
}

void TstSimImages::blockOfAnotherSizeIsNotStored_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("empty") << 0;
    QTest::newRow("not filled up") << 255;
    QTest::newRow("one byte too many") << 257;
}

void TstSimImages::blockOfAnotherSizeIsNotStored()
{
    QFETCH(int, size);
    sendHex({kStart, kErase0});
    send({block(0, QByteArray(size, 'a')), block(1, filled('b'))});
    QCOMPARE(images().image(kAnalog2), filled('\xFF') + filled('b'));
    QCOMPARE(images().breaches(),
             QStringList{QString("analog-fpga2: block 0 with %1 bytes of data").arg(size)});
}

void TstSimImages::breachesAreCountedBeyondThoseRemembered()
{
    for (int i = 0; i < 1005; ++i)
        send({hex(kStop)});
    QCOMPARE(images().breachCount(), 1005);
    QCOMPARE(images().breaches().size(), 1000);
}

void TstSimImages::stopHandsTheImageOver()
{
    QStringList handed;
    m_device->images().setSink([&handed](const FpgaTarget &target, const QByteArray &image) {
        handed << target.name() + ' ' + QString::fromUtf8(image.left(2)) + QString::number(image.size());
    });
    sendHex({kStart, kErase0});
    send({block(0, filled('a'))});
    QCOMPARE(handed, QStringList());
    sendHex({kStop});
    QCOMPARE(handed, QStringList{"analog-fpga2 aa256"});
    sendHex({kStart, kStop});
    QCOMPARE(handed, (QStringList{"analog-fpga2 aa256", "analog-fpga2 0"}));
}

void TstSimImages::stopWithoutARunHandsNothingOver()
{
    int handed = 0;
    m_device->images().setSink([&handed](const FpgaTarget &, const QByteArray &) { ++handed; });
    sendHex({kStop, kStart, kReset, kStop});
    QCOMPARE(handed, 0);
}

void TstSimImages::logTellsStartAndStopOnly()
{
    QCOMPARE(note(hex(kStart)), QString("analog-fpga2: flashing started"));
    QCOMPARE(note(hex(kErase0)), QString());
    QCOMPARE(note(block(0, filled('a'))), QString());
    QCOMPARE(note(hex(kStop)), QString("analog-fpga2: flashing stopped, 1 blocks"));
}

void TstSimImages::names_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("fpga");
    QTest::addColumn<QString>("name");
    QTest::newRow("controller") << 0 << 1 << "controller-fpga1";
    QTest::newRow("analog module") << 1 << 2 << "analog-fpga2";
    QTest::newRow("gateway") << 2 << 1 << "gateway-fpga1";
}

void TstSimImages::names()
{
    QFETCH(int, module);
    QFETCH(int, fpga);
    const FpgaTarget target{static_cast<quint8>(module), static_cast<quint8>(fpga)};
    QVERIFY(target.isKnown());
    QTEST(target.name(), "name");
}

void TstSimImages::folderGetsAFilePerTarget()
{
    QTemporaryDir place;
    const sim::ImageFolder folder(place.filePath("deep/images"));
    QString error;
    QVERIFY2(folder.create(&error), qPrintable(error));
    QVERIFY2(folder.write(kAnalog2, filled('a'), &error), qPrintable(error));
    QVERIFY2(folder.write({0, 1}, QByteArray(), &error), qPrintable(error));
    QVERIFY2(folder.write(kAnalog2, filled('b'), &error), qPrintable(error));
    QFile file(place.filePath("deep/images/analog-fpga2.bin"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), filled('b'));
    QCOMPARE(QFileInfo(place.filePath("deep/images/controller-fpga1.bin")).size(), qint64(0));
}

void TstSimImages::folderThatCannotBeMade()
{
    QTemporaryDir place;
    QFile file(place.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QString error;
    QVERIFY(!sim::ImageFolder(file.fileName() + "/images").create(&error));
    QCOMPARE(error, file.fileName() + "/images: the folder cannot be made");
}

void TstSimImages::fileThatCannotBeWritten()
{
    QTemporaryDir place;
    QVERIFY(QDir(place.path()).mkdir("analog-fpga2.bin"));
    QString error;
    QVERIFY(!sim::ImageFolder(place.path()).write(kAnalog2, filled('a'), &error));
    QVERIFY2(error.startsWith(place.filePath("analog-fpga2.bin") + ": "), qPrintable(error));
}

QTEST_GUILESS_MAIN(TstSimImages)
#include "tst_simimages.moc"
