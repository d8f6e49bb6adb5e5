#include <gtest/gtest.h>

#include "framework/base/exceptions.h"
#include "framework/base/value_stream.h"

namespace framework {
namespace {

TEST(Streams, MemoryIsWrittenAndReadAtAPosition) {
    TMemoryStream stream;
    stream.Write("abcdef");
    stream.SetPosition(2);
    stream.Write(std::string_view("\0-", 2));
    EXPECT_EQ(stream.Bytes(), std::string_view("ab\0-ef", 6));
    stream.Write("EFGH");
    EXPECT_EQ(stream.Bytes(), std::string_view("ab\0-EFGH", 8));
    char buffer[16];
    EXPECT_EQ(stream.Read(buffer, sizeof buffer), 0u);
    stream.SetPosition(6);
    EXPECT_EQ(stream.Read(buffer, sizeof buffer), 2u);
    stream.SetPosition(100);
    EXPECT_EQ(stream.Position(), 8u);
}

TEST(Streams, ValuesCrossTheBuffersOfWriterAndReader) {
    for (const std::size_t size : {0, 1, 2, 3, 7, 300, 1024}) {
        TMemoryStream stream;
        TWriter writer(stream, size);
        writer.WriteListBegin();
        writer.WriteString("short");
        writer.WriteBoolean(true);
        writer.WriteString(std::string(300, 'l'));
        writer.WriteBoolean(false);
        writer.WriteListEnd();
        writer.FlushBuffer();
        EXPECT_EQ(stream.Size(), 1u + 7 + 1 + 305 + 1 + 1);
        stream.SetPosition(0);
        TReader reader(stream, size);
        reader.ReadListBegin();
        EXPECT_FALSE(reader.EndOfList());
        EXPECT_EQ(reader.ReadString(), "short");
        EXPECT_TRUE(reader.ReadBoolean());
        EXPECT_EQ(reader.ReadString(), std::string(300, 'l'));
        EXPECT_FALSE(reader.ReadBoolean());
        EXPECT_TRUE(reader.EndOfList());
        reader.ReadListEnd();
        EXPECT_THROW(reader.EndOfList(), EReadError);
    }
}

}  // namespace
}  // namespace framework
