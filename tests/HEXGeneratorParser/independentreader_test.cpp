// Our HEX files as another tool, srec_cat, reads them.

#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/hexutility.h"
#include "support/imagesupport.h"
#include "support/waiting.h"

#include <QProcess>

using HEXGeneratorParser::HEXBuffer;
using HEXGeneratorParser::HexUtility;

namespace
{
/// A buffer of structures that fill `size` bytes.
void fill(HEXBuffer& buffer, int size)
{
    int byte = 0;
    while (buffer.size() < size - 1) {
        buffer.appendByte(static_cast<char>(byte++ % 251));
    }
    buffer.finishWritingStruct();
}

/// The content of the image's memory: every word high byte first.
QByteArray memoryOf(const HEXBuffer& buffer)
{
    QByteArray bytes;
    for (int i = 0; i < buffer.size(); i += 4) {
        for (const int position : {2, 1, 0, 3}) {
            bytes.append(static_cast<char>(buffer.getByte(i + position)));
        }
    }
    return bytes;
}

void expectSameBytes(int size, int startWordAddress)
{
    HEXBuffer buffer(2048, nullptr);
    fill(buffer, size);
    ASSERT_EQ(buffer.size(), size);
    const QTemporaryDir folder;
    const QString hexFile = folder.filePath("image.hex");
    const QString binaryFile = folder.filePath("image.bin");
    ASSERT_TRUE(buffer.writeToFile(hexFile, startWordAddress));

    const int start = 2 * startWordAddress;
    QProcess tool;
    tool.start("srec_cat", {hexFile, "-intel", "-offset", QString::number(-start), "-o", binaryFile,
                            "-binary"});
    ASSERT_TRUE(tool.waitForFinished(patience)) << tool.errorString();
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError();
    const QByteArray read = contentOf(binaryFile);
    EXPECT_EQ(read.size(), (size + 255) / 256 * 256) << "whole rows";
    EXPECT_EQ(ImageSupport::hex(read.left(size)), ImageSupport::hex(memoryOf(buffer)));
    for (int i = size; i < read.size(); ++i) {
        EXPECT_EQ(static_cast<unsigned char>(read.at(i)), i % 4 == 3 ? 0x00 : 0xFF) << i;
    }
}
} // namespace

TEST(IndependentReader, FindsAFullImageAtTheChargersAddress)
{
    expectSameBytes(2048, 0x9C00);
}

TEST(IndependentReader, FindsAPartlyUsedImageFilledWithErasedWords)
{
    expectSameBytes(300, 0x9C00);
}

TEST(IndependentReader, FindsImagesOnBothSidesOf64KiB)
{
    expectSameBytes(2048, 0x7000); // byte addresses 0xE000 to 0xE7FF
    expectSameBytes(2048, 0x8000); // byte addresses 0x10000 to 0x107FF
}

TEST(IndependentReader, FindsAnImageThatPasses64KiB)
{
    expectSameBytes(2048, 0x7E00); // byte addresses 0xFC00 to 0x103FF
}

TEST(IndependentReader, FindsImagesAtBothEndsOfTheFlashMemory)
{
    expectSameBytes(2048, 0);
    expectSameBytes(2048, (0x30000 - 2048) / 2);
}
