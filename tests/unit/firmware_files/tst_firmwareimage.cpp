#include "firmware/firmwareimage.h"

#include <QtTest>
#include <cstring>
#include <random>

using firmwareimage::blockCommand;
using firmwareimage::chipInContents;
using firmwareimage::commandCount;
using firmwareimage::commands;
using firmwareimage::plainCommand;
using firmwareimage::Target;

namespace {

const char kIce5[] = "iCE5LP4K-SG48";
const char kIce40[] = "iCE40UP5K-SG48";
const QByteArray kPadding(256, '\xFF');

/// Random bytes that repeat with a prime length, so that no two blocks near each other are equal.
QByteArray randomImage(int size)
{
    constexpr int kTile = 65521;
    static const QByteArray tile = [] {
        std::mt19937 random(7);
        QByteArray bytes(kTile, Qt::Uninitialized);
        for (char &byte : bytes)
            byte = char(random());
        return bytes;
    }();
    QByteArray image(size, Qt::Uninitialized);
    for (int at = 0; at < size; at += kTile)
        std::memcpy(image.data() + at, tile.constData(), size_t(qMin(kTile, size - at)));
    return image;
}

bool hasHead(const FPGAfwCommand &command, int code, int w1, int w2)
{
    return command.b0 == 1 && command.b1 == 2 && command.b2 == 1 && command.b3 == code && command.w1 == w1 &&
           command.w2 == w2;
}

bool isPlain(const FPGAfwCommand &command, int code, int w1 = 0)
{
    return hasHead(command, code, w1, 0) && command.data.isEmpty();
}

} // namespace

class TstFirmwareImage : public QObject
{
    Q_OBJECT

private slots:
    void constantsAreTheDevices();
    void commandsWriteTheWholeImage_data();
    void commandsWriteTheWholeImage();
    void commandsOutliveTheImage();
    void imageOfPaddingBytesIsWrittenToo();
    void targetBytesStandInEachCommand_data();
    void targetBytesStandInEachCommand();
    void serviceCommands_data();
    void serviceCommands();
    void shortBlockIsFilledUp_data();
    void shortBlockIsFilledUp();
    void chipIsFoundInContents_data();
    void chipIsFoundInContents();
    void chipIsFoundAcrossEachBoundary();
    void chipIsFoundAtTheEndOfTheLargestImage();
};

void TstFirmwareImage::constantsAreTheDevices()
{
    QCOMPARE(firmwareimage::kBlockSize, 256);
    QCOMPARE(firmwareimage::kPageSize, 65536);
    QCOMPARE(firmwareimage::kMaximumSize, qint64(16777216));
}

// total = start + erases + blocks + stop + reset
void TstFirmwareImage::commandsWriteTheWholeImage_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("erases");
    QTest::addColumn<int>("blocks");
    QTest::addColumn<int>("total");
    QTest::addColumn<int>("padding");
    const auto row = [](int size, int erases, int blocks, int total, int padding) {
        QTest::addRow("%d", size) << size << erases << blocks << total << padding;
    };
    row(0, 1, 0, 4, 0);
    row(1, 1, 1, 5, 255);
    row(232, 1, 1, 5, 24);
    row(255, 1, 1, 5, 1);
    row(256, 1, 1, 5, 0);
    row(257, 1, 2, 6, 255);
    row(1000, 1, 4, 8, 24);
    row(65535, 1, 256, 260, 1);
    row(65536, 2, 256, 261, 0);
    row(65537, 2, 257, 262, 255);
    row(131071, 2, 512, 517, 1);
    row(131072, 3, 512, 518, 0);
    row(300000, 5, 1172, 1180, 32);
    row(16777215, 256, 65536, 65795, 1);
    row(16777216, 257, 65536, 65796, 0);
}

void TstFirmwareImage::commandsWriteTheWholeImage()
{
    QFETCH(int, size);
    QFETCH(int, erases);
    QFETCH(int, blocks);
    QFETCH(int, total);
    QFETCH(int, padding);
    const QByteArray image = randomImage(size);
    const QVector<FPGAfwCommand> all = commands(Target{1, 2}, image);

    QCOMPARE(commandCount(size), total);
    QCOMPARE(all.size(), total);
    QVERIFY(isPlain(all.first(), 1));
    for (int page = 0; page < erases; ++page)
        QVERIFY2(isPlain(all.at(1 + page), 0xE0, page), qPrintable(QString::number(page)));
    QVERIFY(isPlain(all.at(total - 2), 0));
    QVERIFY(isPlain(all.at(total - 1), 0x2B));

    for (int block = 0; block < blocks; ++block) {
        const FPGAfwCommand &command = all.at(1 + erases + block);
        const int bytes = block == blocks - 1 ? 256 - padding : 256;
        const bool good =
            hasHead(command, 0xE1, block, 256) && command.data.size() == 256 &&
            std::memcmp(command.data.constData(), image.constData() + block * 256, size_t(bytes)) == 0 &&
            command.data.mid(bytes) == kPadding.left(256 - bytes);
        QVERIFY2(good, qPrintable(QString("block %1").arg(block)));
    }
}

void TstFirmwareImage::commandsOutliveTheImage()
{
    QVector<FPGAfwCommand> all;
    {
        QByteArray image = randomImage(1000);
        all = commands(Target{1, 2}, image);
        image.fill('x');
    }
    QByteArray written;
    for (const FPGAfwCommand &command : qAsConst(all))
        written += command.data;
    QCOMPARE(written, randomImage(1000) + QByteArray(24, '\xFF'));
}

void TstFirmwareImage::imageOfPaddingBytesIsWrittenToo()
{
    const QVector<FPGAfwCommand> all = commands(Target{1, 2}, QByteArray(300, '\xFF'));
    QCOMPARE(all.size(), 6);
    QVERIFY(hasHead(all.at(2), 0xE1, 0, 256));
    QVERIFY(hasHead(all.at(3), 0xE1, 1, 256));
    QCOMPARE(all.at(2).data, kPadding);
    QCOMPARE(all.at(3).data, kPadding);
}

void TstFirmwareImage::targetBytesStandInEachCommand_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("fpga");
    for (int module : {0, 1, 2})
        for (int fpga : {1, 2})
            QTest::addRow("module %d, FPGA %d", module, fpga) << module << fpga;
}

void TstFirmwareImage::targetBytesStandInEachCommand()
{
    QFETCH(int, module);
    QFETCH(int, fpga);
    const QVector<FPGAfwCommand> all = commands(Target{quint8(module), quint8(fpga)}, randomImage(600));
    QCOMPARE(all.size(), 7);
    for (const FPGAfwCommand &command : all) {
        QCOMPARE(int(command.b0), module);
        QCOMPARE(int(command.b1), fpga);
        QCOMPARE(int(command.b2), 1);
    }
}

void TstFirmwareImage::serviceCommands_data()
{
    QTest::addColumn<FPGAfwCommand>("command");
    QTest::addColumn<FPGAfwCommand>("expected");
    const auto row = [](const char *name, const FPGAfwCommand &command, const FPGAfwCommand &expected) {
        QTest::newRow(name) << command << expected;
    };
    using C = FPGAfwCommand;
    using Code = FpgaCommandCode;
    row("start", plainCommand(Target{1, 2}, Code::Start), C{1, 2, 1, 1, 0, 0, {}});
    row("stop", plainCommand(Target{1, 2}, Code::Stop), C{1, 2, 1, 0, 0, 0, {}});
    row("erase", plainCommand(Target{0, 1}, Code::ErasePage), C{0, 1, 1, 224, 0, 0, {}});
    row("reset", plainCommand(Target{2, 1}, Code::Reset), C{2, 1, 1, 43, 0, 0, {}});
    row("empty block", blockCommand(Target{1, 1}, 0, {}), C{1, 1, 1, 225, 0, 256, kPadding});
    row("nothing chosen", plainCommand(Target(), Code::Start), C{0, 1, 1, 1, 0, 0, {}});
    row("last block number", blockCommand(Target{2, 2}, 65535, kPadding),
        C{2, 2, 1, 225, 65535, 256, kPadding});
}

void TstFirmwareImage::serviceCommands()
{
    QFETCH(FPGAfwCommand, command);
    QFETCH(FPGAfwCommand, expected);
    QCOMPARE(command.b0, expected.b0);
    QCOMPARE(command.b1, expected.b1);
    QCOMPARE(command.b2, expected.b2);
    QCOMPARE(command.b3, expected.b3);
    QCOMPARE(command.w1, expected.w1);
    QCOMPARE(command.w2, expected.w2);
    QCOMPARE(command.data, expected.data);
}

void TstFirmwareImage::shortBlockIsFilledUp_data()
{
    QTest::addColumn<int>("size");
    for (int size : {0, 1, 128, 232, 255, 256})
        QTest::addRow("%d", size) << size;
}

void TstFirmwareImage::shortBlockIsFilledUp()
{
    QFETCH(int, size);
    const QByteArray block(size, '\0'); // zeros are data too
    const FPGAfwCommand command = blockCommand(Target{1, 2}, 3, block);
    QVERIFY(hasHead(command, 225, 3, 256));
    QCOMPARE(command.data, block + QByteArray(256 - size, '\xFF'));
}

void TstFirmwareImage::chipIsFoundInContents_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("chip");
    const QByteArray ice5(kIce5);
    const QByteArray ice40(kIce40);
    const auto row = [](const char *name, const QByteArray &image, const char *chip) {
        QTest::newRow(name) << image << chip;
    };
    row("alone, smaller", ice5, kIce5);
    row("alone, larger", ice40, kIce40);
    row("NUL in front", QByteArray(1, '\0') + ice40 + "x", kIce40);
    row("many NUL in front", QByteArray(70000, '\0') + ice5, kIce5);
    row("bytes above 127 around", QByteArray("\xff\xfe\xc3\x28") + ice5 + "\x80\xff", kIce5);
    row("half a UTF-8 letter in front", QByteArray("\xe2\x82") + ice40, kIce40);
    row("line ends around", "\r\n" + ice40 + "\n\r", kIce40);
    row("both", ice5 + ice40, kIce5);
    row("both, smaller behind", ice40 + QByteArray(1000, '\0') + ice5, kIce5);
    row("begun twice", "iCE5LP4K-iCE5LP4K-SG48", kIce5);
    row("letters in front", "iiCE40UP5K-SG48", kIce40);
    row("digits behind", ice5 + "8888", kIce5);
    row("last letter is missing", "iCE5LP4K-SG4 iCE40UP5K-SG4", "");
    row("first letter is missing", "CE5LP4K-SG48 CE40UP5K-SG48", "");
    row("lower case", ice5.toLower() + ice40.toLower(), "");
    row("upper case", ice5.toUpper() + ice40.toUpper(), "");
    row("NUL within", QByteArray("iCE5LP4K\0-SG48", 14), "");
    row("two bytes per letter", QByteArray("i\0C\0E\0005\0L\0P\0004\0K\0-\0S\0G\0004\0008\0", 26), "");
    row("another chip", "iCE40UP3K-SG48", "");
    row("the filler of the names", QByteArray(15, '0'), "");
    row("nothing", "", "");
    row("NUL alone", QByteArray(300, '\0'), "");
    row("random", randomImage(300000), "");
}

void TstFirmwareImage::chipIsFoundInContents()
{
    QFETCH(QByteArray, image);
    QFETCH(QString, chip);
    QCOMPARE(chipInContents(image), chip);
}

void TstFirmwareImage::chipIsFoundAcrossEachBoundary()
{
    for (const int boundary : {256, 512, 4096, 65536, 131072}) {
        for (int before = 0; before <= 14; ++before) {
            QByteArray image = randomImage(boundary + 300);
            image.replace(boundary - before, 14, kIce40);
            QCOMPARE(chipInContents(image), QString(kIce40));
        }
    }
}

void TstFirmwareImage::chipIsFoundAtTheEndOfTheLargestImage()
{
    QByteArray image(int(firmwareimage::kMaximumSize), '\0');
    QCOMPARE(chipInContents(image), QString());
    image.replace(image.size() - 14, 14, kIce40);
    QCOMPARE(chipInContents(image), QString(kIce40));
}

QTEST_GUILESS_MAIN(TstFirmwareImage)
#include "tst_firmwareimage.moc"
