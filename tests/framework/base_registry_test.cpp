#include <gtest/gtest.h>
#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/registry.h"

namespace framework {
namespace {

class Registry : public testing::Test {
protected:
    Registry() : Key("Software\\TandrelTest\\Base" + std::to_string(::GetCurrentProcessId())) {}
    ~Registry() override {
        ::RegDeleteKeyA(HKEY_CURRENT_USER, (Key + "\\Sub").c_str());
        ::RegDeleteKeyA(HKEY_CURRENT_USER, Key.c_str());
        // Fails, rightly, as long as another test has its key there.
        ::RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\TandrelTest");
    }

    void SetRaw(const char* name, DWORD type, const std::string& bytes) {
        ASSERT_EQ(::RegSetKeyValueA(HKEY_CURRENT_USER, Key.c_str(), name, type, bytes.data(),
                                    static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }

    const std::string Key;
    TRegistry Values{HKEY_CURRENT_USER};
};

TEST_F(Registry, CreatesAKeyOnlyWhenAskedTo) {
    EXPECT_FALSE(Values.OpenKeyReadOnly(Key));
    EXPECT_FALSE(Values.OpenKey(Key, false));
    EXPECT_TRUE(Values.OpenKey(Key + "\\Sub", true));
    EXPECT_TRUE(Values.OpenKeyReadOnly(Key));
}

TEST_F(Registry, KeepsTexts) {
    ASSERT_TRUE(Values.OpenKey(Key, true));
    for (const std::string text : {"", "C:\\r\xE4po", "a b  ", "%PATH%"}) {
        Values.WriteString("SERVER", text);
        EXPECT_EQ(Values.ReadString("SERVER"), text);
    }
    const std::string large(100'000, 'x');
    Values.WriteString("CVSROOT", large);
    EXPECT_EQ(Values.ReadString("CVSROOT"), large);
    EXPECT_TRUE(Values.ValueExists("server"));
    EXPECT_FALSE(Values.ValueExists("PATH"));
}

TEST_F(Registry, ReadsWhatOthersWroteBadly) {
    SetRaw("unterminated", REG_SZ, "abc");
    SetRaw("twice", REG_SZ, std::string("ab\0cd\0", 6));
    SetRaw("expand", REG_EXPAND_SZ, std::string("%TEMP%\0", 7));
    ASSERT_TRUE(Values.OpenKeyReadOnly(Key));
    EXPECT_EQ(Values.ReadString("unterminated"), "abc");
    EXPECT_EQ(Values.ReadString("twice"), "ab");
    EXPECT_EQ(Values.ReadString("expand"), "%TEMP%");
}

TEST_F(Registry, RaisesForWhatIsNoText) {
    SetRaw("number", REG_DWORD, "1234");
    ASSERT_TRUE(Values.OpenKeyReadOnly(Key));
    EXPECT_THROW(Values.ReadString("number"), ERegistryError);
    EXPECT_THROW(Values.ReadString("missing"), ERegistryError);
    EXPECT_THROW(Values.WriteString("number", "x"), ERegistryError);
    Values.CloseKey();
    EXPECT_FALSE(Values.ValueExists("number"));
    EXPECT_THROW(Values.ReadString("number"), ERegistryError);
}

TEST_F(Registry, ClosesTheKeyBeforeEvenWhenTheNextCannotBeOpened) {
    ASSERT_TRUE(Values.OpenKey(Key, true));
    Values.WriteString("a", "b");
    EXPECT_FALSE(Values.OpenKeyReadOnly(Key + "\\none"));
    EXPECT_FALSE(Values.ValueExists("a"));
}

}  // namespace
}  // namespace framework
