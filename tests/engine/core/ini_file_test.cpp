#include "engine/core/ini_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

const std::string file = "Nimbry.ini";

class IniFile : public testing::Test {
protected:
    // The file holds these bytes and has just been read.
    void given(const std::string& bytes) {
        disk.put(file, bytes);
        ASSERT_TRUE(ini.read());
    }
    std::string bytes() const { return disk.contents(file); }
    std::size_t writes() const {
        std::size_t count = 0;
        for (const auto& call : disk.calls()) count += call.operation != "read";
        return count;
    }

    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    clsIniFile ini{disk, file};
};

// Reading

struct ReadCase {
    const char* law;
    std::string bytes;
    std::string value;  // of key `k` in section `S`, default "(none)"
};

class IniFileReads : public IniFile, public testing::WithParamInterface<ReadCase> {};

TEST_P(IniFileReads, ByTheRulesOfTheFormat) {
    SCOPED_TRACE(GetParam().law);
    given(GetParam().bytes);
    EXPECT_EQ(ini.GetSetting("S", "k", "(none)"), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Case, IniFileReads,
    testing::Values(
        ReadCase{"a plain key", "[S]\r\nk=v\r\n", "v"}, ReadCase{"an empty file has no key", "", "(none)"},
        ReadCase{"the key must lie in its section", "[T]\r\nk=v\r\n", "(none)"},
        ReadCase{"a key before any section lies in none", "k=v\r\n[S]\r\n", "(none)"},
        ReadCase{"section names compare without case", "[s]\r\nk=v\r\n", "v"},
        ReadCase{"key names compare without case", "[S]\r\nK=v\r\n", "v"},
        ReadCase{"letters beyond ASCII keep their case", "[S]\r\n\xC4k=a\r\nk=v\r\n", "v"},
        ReadCase{"the first key of a name counts", "[S]\r\nk=first\r\nk=second\r\n", "first"},
        ReadCase{"the first section of a name counts", "[S]\r\nk=first\r\n[S]\r\nk=second\r\n", "first"},
        ReadCase{"a later section of the name is not looked into", "[S]\r\nx=1\r\n[T]\r\n[s]\r\nk=v\r\n", "(none)"},
        ReadCase{"a section ends at the next one", "[S]\r\n[T]\r\nk=v\r\n", "(none)"},
        ReadCase{"blanks and tabs around a line go", "[S]\r\n \t k=v\t \r\n", "v"},
        ReadCase{"blanks and tabs around the sign go", "[S]\r\nk \t=\t v\r\n", "v"},
        ReadCase{"blanks before a header go", "[S]\r\n  [T]\r\nk=v\r\n", "(none)"},
        ReadCase{"blanks in a header's name go", "[ S ]\r\nk=v\r\n", "v"},
        ReadCase{"a header without its end is one", "[S\r\nk=v\r\n", "v"},
        ReadCase{"what stands behind a header is nothing", "[S] k=x\r\nk=v\r\n", "v"},
        ReadCase{"a line that begins with a semicolon is a comment", "[S]\r\n;k=no\r\n ; k=no\r\nk=v\r\n", "v"},
        ReadCase{"a semicolon in a value is value", "[S]\r\nk=v ;x\r\n", "v ;x"},
        ReadCase{"a hash in a value is value", "[S]\r\nk=v # x\r\n", "v # x"},
        ReadCase{"a line that begins with a hash is no comment", "[S]\r\n#k=no\r\n", "(none)"},
        ReadCase{"a backslash is value, at the end too", "[S]\r\nk=C:\\\r\nx=1\r\n", "C:\\"},
        ReadCase{"the key ends at the first sign", "[S]\r\nk=a=b\r\n", "a=b"},
        ReadCase{"a line without a sign is no key", "[S]\r\nk\r\nk=v\r\n", "v"},
        ReadCase{"double quotes go, blanks in them stay", "[S]\r\nk=\"  v \"\r\n", "  v "},
        ReadCase{"single quotes go, blanks in them stay", "[S]\r\nk=' v'\r\n", " v"},
        ReadCase{"one pair only", "[S]\r\nk=\"\"v\"\"\r\n", "\"v\""},
        ReadCase{"a quote at one end stays", "[S]\r\nk=\"v\r\n", "\"v"},
        ReadCase{"quotes that do not match stay", "[S]\r\nk=\"v'\r\n", "\"v'"},
        ReadCase{"a lone quote stays", "[S]\r\nk=\"\r\n", "\""},
        ReadCase{"empty quotes are the empty value", "[S]\r\nk=\"\"\r\n", ""},
        ReadCase{"nothing behind the sign is the empty value, not the default", "[S]\r\nk=\r\n", ""},
        ReadCase{"blanks behind the sign are the empty value", "[S]\r\nk=   \r\n", ""},
        ReadCase{"line feeds end lines too", "[S]\nk=v\nx=1\n", "v"},
        ReadCase{"the last line needs no end", "[S]\r\nk=v", "v"},
        ReadCase{"a carriage return inside a line is value", "[S]\r\nk=a\rb\r\n", "a\rb"},
        ReadCase{"a lone one at the end of the file too", "[S]\r\nk=v\r", "v\r"},
        ReadCase{"a value ends at a NUL", "[S]\r\nk=v\0w\r\n"s, "v"},
        ReadCase{"NUL bytes elsewhere do no harm", "\0\0[S]\r\nk=no\r\n[S]\r\n\0\0\r\nk=v\r\n"s, "v"},
        ReadCase{"a byte-order mark is no part of a name", "\xEF\xBB\xBF[S]\r\nk=v\r\n", "v"},
        ReadCase{"bytes beyond ASCII are value", "[S]\r\nk=20 \xB0 C\r\n", "20 \xB0 C"},
        ReadCase{"2047 bytes come whole", "[S]\r\nk=" + std::string(2047, 'x') + "\r\n", std::string(2047, 'x')},
        ReadCase{"more is cut there", "[S]\r\nk=" + std::string(2048, 'x') + "\r\n", std::string(2047, 'x')},
        ReadCase{"quotes go before the cut", "[S]\r\nk=\"" + std::string(2047, 'x') + "\"\r\n",
                 std::string(2047, 'x')}));

TEST_F(IniFile, GivesTheDefaultOnlyForAMissingKey) {
    given("[S]\r\nempty=\r\n");
    EXPECT_EQ(ini.GetSetting("S", "missing", "d"), "d");
    EXPECT_EQ(ini.GetSetting("S", "empty", "d"), "");
    EXPECT_EQ(ini.GetSetting("T", "empty", "d"), "d");
    EXPECT_TRUE(ini.has("s", "EMPTY"));
    EXPECT_FALSE(ini.has("S", "missing"));
}

TEST_F(IniFile, DropsTheTrailingBlanksOfADefaultAndCutsIt) {
    EXPECT_EQ(ini.GetSetting("S", "k", " d  "), " d");
    EXPECT_EQ(ini.GetSetting("S", "k", "   "), "");
    EXPECT_EQ(ini.GetSetting("S", "k", std::string(3000, 'x')), std::string(2047, 'x'));
}

TEST_F(IniFile, TakesExactlyTrueForTrue) {
    given("[S]\r\na=True\r\nb=true\r\nc=TRUE\r\nd=1\r\ne=\r\nf=\" True \"\r\ng=False\r\nh=Truely\r\n");
    EXPECT_TRUE(ini.GetFlag("S", "a", false));
    for (const char* key : {"b", "c", "d", "e", "g", "h"}) EXPECT_FALSE(ini.GetFlag("S", key, true)) << key;
    EXPECT_TRUE(ini.GetFlag("S", "f", false)) << "trimmed before it is compared";
    EXPECT_TRUE(ini.GetFlag("S", "missing", true));
    EXPECT_FALSE(ini.GetFlag("S", "missing", false));
}

TEST_F(IniFile, OfAMissingFileIsEmptyAndReadable) {
    EXPECT_TRUE(ini.read());
    EXPECT_EQ(ini.GetSetting("S", "k", "d"), "d");
    EXPECT_TRUE(disk.names().empty()) << "reading makes no file";
}

TEST_F(IniFile, SeesWhatOthersWroteAtTheNextReadOnly) {
    given("[S]\r\nk=old\r\n");
    disk.put(file, "[S]\r\nk=new\r\n");
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "old");
    EXPECT_TRUE(ini.read());
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "new");
}

TEST_F(IniFile, ListsASectionAsItIsWritten) {
    given(
        "[T]\r\nz=0\r\n[S]\r\n b = \"2\" \r\n; a comment\r\n\r\nA=1\r\nno "
        "key\r\nb=again\r\n[U]\r\ny=0\r\n[S]\r\nlater=1\r\n");
    EXPECT_EQ(ini.GetSection("s"), (Lines{"b=\"2\"", "A=1", "b=again"}));
    EXPECT_EQ(ini.GetSection("missing"), Lines{});
}

TEST_F(IniFile, CutsAListedSectionAt4095BytesInAll) {
    // 2 + 3997 bytes, a separator, then 95 bytes are left.
    given("[S]\r\na=" + std::string(3997, 'x') + "\r\nb=" + std::string(200, 'y') + "\r\nc=1\r\n");
    EXPECT_EQ(ini.GetSection("S"), (Lines{"a=" + std::string(3997, 'x'), "b=" + std::string(93, 'y')}));
    given("[S]\r\na=" + std::string(4093, 'x') + "\r\nb=1\r\n");
    EXPECT_EQ(ini.GetSection("S"), (Lines{"a=" + std::string(4093, 'x')})) << "exactly 4095 bytes";
    given("[S]\r\na=" + std::string(4092, 'x') + "\r\nb=1\r\n");
    EXPECT_EQ(ini.GetSection("S"), (Lines{"a=" + std::string(4092, 'x')})) << "only the separator fits";
}

// Writing

struct WriteCase {
    const char* law;
    std::string before;
    std::vector<clsIniFile::Setting> settings;
    std::string after;
};

class IniFileWrites : public IniFile, public testing::WithParamInterface<WriteCase> {};

TEST_P(IniFileWrites, OneLineAndKeepsEveryOtherByte) {
    SCOPED_TRACE(GetParam().law);
    given(GetParam().before);
    EXPECT_TRUE(ini.SaveSettings(GetParam().settings));
    EXPECT_EQ(bytes(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Case, IniFileWrites,
    testing::Values(
        WriteCase{"a key is replaced in place, comments and order stay",
                  "; top\r\n[T]\r\nk=other\r\n\r\n[S]\r\n;c\r\na=1\r\nk=old\r\nb=2\r\n\r\n; end\r\n[U]\r\nk=x\r\n",
                  {{"S", "k", "new"}},
                  "; top\r\n[T]\r\nk=other\r\n\r\n[S]\r\n;c\r\na=1\r\nk=new\r\nb=2\r\n\r\n; end\r\n[U]\r\nk=x\r\n"},
        WriteCase{"the key keeps its spelling", "[s]\r\n KeY =old\r\n", {{"S", "key", "new"}}, "[s]\r\n KeY =new\r\n"},
        WriteCase{"only the first of two is replaced",
                  "[S]\r\nk=1\r\nk=2\r\n[S]\r\nk=3\r\n",
                  {{"S", "k", "x"}},
                  "[S]\r\nk=x\r\nk=2\r\n[S]\r\nk=3\r\n"},
        WriteCase{"a commented key is left alone", "[S]\r\n;k=1\r\n", {{"S", "k", "x"}}, "[S]\r\n;k=1\r\nk=x\r\n"},
        WriteCase{"a written line ends in CR LF, the others keep their ends",
                  "[S]\na=1\nk=old\nb=2\n",
                  {{"S", "k", "new"}},
                  "[S]\na=1\nk=new\r\nb=2\n"},
        WriteCase{"the last line too, if it had no end", "[S]\r\nk=old", {{"S", "k", "new"}}, "[S]\r\nk=new\r\n"},
        WriteCase{"a new key goes behind the last line of its section that is not blank",
                  "[S]\r\na=1\r\n;c\r\n \t\r\n\r\n[T]\r\n",
                  {{"S", "k", "v"}},
                  "[S]\r\na=1\r\n;c\r\nk=v\r\n \t\r\n\r\n[T]\r\n"},
        WriteCase{
            "a section that is only a header takes it", "[S]\r\n[T]\r\n", {{"S", "k", "v"}}, "[S]\r\nk=v\r\n[T]\r\n"},
        WriteCase{
            "a last line without an end gets one first", "[S]\r\na=1", {{"S", "k", "v"}}, "[S]\r\na=1\r\nk=v\r\n"},
        WriteCase{"a new section is appended", "[T]\r\na=1\r\n", {{"S", "k", "v"}}, "[T]\r\na=1\r\n[S]\r\nk=v\r\n"},
        WriteCase{
            "behind a last line without an end too", "[T]\r\na=1", {{"S", "k", "v"}}, "[T]\r\na=1\r\n[S]\r\nk=v\r\n"},
        WriteCase{"and behind trailing blank lines", "[T]\r\n\r\n", {{"S", "k", "v"}}, "[T]\r\n\r\n[S]\r\nk=v\r\n"},
        WriteCase{"an empty file gets section and key", "", {{"S", "k", "v"}}, "[S]\r\nk=v\r\n"},
        WriteCase{"lines in no section stay in none", "k=0\r\n", {{"S", "k", "v"}}, "k=0\r\n[S]\r\nk=v\r\n"},
        WriteCase{
            "a byte-order mark stays", "\xEF\xBB\xBF[S]\r\nk=1\r\n", {{"S", "k", "v"}}, "\xEF\xBB\xBF[S]\r\nk=v\r\n"},
        WriteCase{"quotes are not added", "[S]\r\nk=\"a\"\r\n", {{"S", "k", " b "}}, "[S]\r\nk= b \r\n"},
        WriteCase{"a line end in a value becomes blanks", "[S]\r\n", {{"S", "k", "a\r\nb\nc"}}, "[S]\r\nk=a  b c\r\n"},
        WriteCase{"an empty value leaves the key", "[S]\r\nk=1\r\n", {{"S", "k", ""}}, "[S]\r\nk=\r\n"},
        WriteCase{"several at once, old and new, in two sections",
                  "[S]\r\na=1\r\nb=2\r\n\r\n[T]\r\nc=3\r\n",
                  {{"T", "d", "40"}, {"S", "b", "20"}, {"S", "x", "50"}, {"T", "c", "30"}, {"S", "y", "60"}},
                  "[S]\r\na=1\r\nb=20\r\nx=50\r\ny=60\r\n\r\n[T]\r\nc=30\r\nd=40\r\n"},
        WriteCase{"several into new sections, each section once, in their order",
                  "",
                  {{"S", "a", "1"}, {"T", "b", "2"}, {"s", "c", "3"}},
                  "[S]\r\na=1\r\nc=3\r\n[T]\r\nb=2\r\n"},
        WriteCase{"of two for one key the later counts",
                  "[S]\r\n",
                  {{"S", "k", "1"}, {"S", "a", "2"}, {"s", "K", "3"}},
                  "[S]\r\nk=3\r\na=2\r\n"},
        WriteCase{"a replaced last line without an end, and a new key behind it",
                  "[S]\r\nk=",
                  {{"S", "a", "1"}, {"S", "k", ""}},
                  "[S]\r\nk=\r\na=1\r\n"}));

TEST_F(IniFile, IsMadeByTheFirstWriteForItsOwnerOnly) {
    ASSERT_TRUE(ini.read());
    EXPECT_TRUE(ini.SaveSetting("Main", "HasRun", "True"));
    EXPECT_EQ(bytes(), "[Main]\r\nHasRun=True\r\n");
    EXPECT_TRUE(disk.is_private(file));
}

TEST_F(IniFile, IsReplacedAsAWhole) {
    given("[S]\r\nk=1\r\n");
    disk.forget_calls();
    EXPECT_TRUE(ini.SaveSetting("S", "k", "2"));
    ASSERT_EQ(writes(), 1U);
    EXPECT_EQ(disk.calls().back().operation, "replace");
}

TEST_F(IniFile, IsWrittenOnceForManySettings) {
    given("");
    disk.forget_calls();
    EXPECT_TRUE(ini.SaveSettings({{"S", "a", "1"}, {"S", "b", "2"}, {"T", "c", "3"}}));
    EXPECT_EQ(writes(), 1U);
}

TEST_F(IniFile, IsNotWrittenWhenNothingWouldChange) {
    given("[S]\r\nk=1\r\n");
    disk.forget_calls();
    EXPECT_TRUE(ini.SaveSetting("S", "k", "1"));
    EXPECT_TRUE(ini.SaveSettings({}));
    EXPECT_EQ(writes(), 0U);
}

TEST_F(IniFile, WritesBooleansAsTheirWords) {
    given("");
    ini.SaveFlag("S", "a", true);
    ini.SaveFlag("S", "b", false);
    EXPECT_EQ(bytes(), "[S]\r\na=True\r\nb=False\r\n");
}

TEST_F(IniFile, ReadsAWrittenValueAtOnce) {
    given("");
    EXPECT_TRUE(ini.SaveSetting("S", "k", " \"v\" "));
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "v") << "outer blanks and quotes are lost at the next read";
}

TEST_F(IniFile, KeepsWhatOthersWroteMeanwhile) {
    given("[S]\r\nk=1\r\n");
    disk.put(file, "; by hand\r\n[S]\r\nk=1\r\nown=2\r\n");
    EXPECT_TRUE(ini.SaveSetting("S", "k", "3"));
    EXPECT_EQ(bytes(), "; by hand\r\n[S]\r\nk=3\r\nown=2\r\n");
    EXPECT_EQ(ini.GetSetting("S", "own", ""), "2");
}

TEST_F(IniFile, DeletesASectionAndNothingElse) {
    given("; top\r\n[S]\r\nk=1\r\n; in it\r\n\r\n[T]\r\nk=2\r\n[s]\r\nk=3\r\n");
    EXPECT_TRUE(ini.DeleteSection("s"));
    EXPECT_EQ(bytes(), "; top\r\n[T]\r\nk=2\r\n[s]\r\nk=3\r\n");
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "3") << "the next one of the name is the first now";
    EXPECT_TRUE(ini.DeleteSection("missing"));
    EXPECT_EQ(bytes(), "; top\r\n[T]\r\nk=2\r\n[s]\r\nk=3\r\n");
    EXPECT_TRUE(ini.DeleteSection("S"));
    EXPECT_EQ(bytes(), "; top\r\n[T]\r\nk=2\r\n") << "the last section reaches to the end";
}

// Trouble

TEST_F(IniFile, KeepsAValueInForceThatCouldNotBeWritten) {
    given("[S]\r\nk=old\r\na=1\r\n");
    disk.refuse_changes(FileResult::permission);
    EXPECT_FALSE(ini.SaveSetting("S", "k", "new"));
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "new");
    EXPECT_EQ(bytes(), "[S]\r\nk=old\r\na=1\r\n");
    EXPECT_TRUE(ini.read());
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "new") << "reading the file afresh does not lose it";
}

TEST_F(IniFile, BringsAnUnwrittenValueToTheDiskWithTheNextWrite) {
    given("[S]\r\nk=old\r\na=1\r\n");
    disk.refuse_changes(FileResult::disk_full);
    EXPECT_FALSE(ini.SaveSetting("S", "k", "lost"));
    EXPECT_FALSE(ini.SaveSetting("s", "K", "new"));
    disk.allow();
    EXPECT_TRUE(ini.SaveSetting("S", "a", "2"));
    EXPECT_EQ(bytes(), "[S]\r\nk=new\r\na=2\r\n");
    disk.put(file, "[S]\r\nk=by hand\r\n");
    EXPECT_TRUE(ini.read());
    EXPECT_EQ(ini.GetSetting("S", "k", ""), "by hand") << "once written it is no longer held against the file";
}

TEST_F(IniFile, ThatCannotBeReadGivesDefaultsAndIsNeverWrittenOver) {
    disk.put(file, "[S]\r\nk=kept\r\n");
    disk.refuse(file, FileResult::permission);
    EXPECT_FALSE(ini.read());
    EXPECT_EQ(ini.GetSetting("S", "k", "d"), "d");
    disk.forget_calls();
    EXPECT_FALSE(ini.SaveSetting("S", "a", "1"));
    EXPECT_FALSE(ini.DeleteSection("T"));
    EXPECT_EQ(writes(), 0U);
    EXPECT_EQ(ini.GetSetting("S", "a", ""), "1");
    disk.allow();
    EXPECT_EQ(bytes(), "[S]\r\nk=kept\r\n");
    EXPECT_TRUE(ini.SaveSetting("S", "b", "2"));
    EXPECT_EQ(bytes(), "[S]\r\nk=kept\r\na=1\r\nb=2\r\n") << "readable again: what was held back follows";
}

TEST_F(IniFile, LosesNothingWhicheverDiskCallFails) {
    const std::string before = "; mine\r\n[S]\r\nk=1\r\na=0\r\n";
    // One read, twice a read and a write, and the read of a deletion that finds nothing to delete.
    for (std::size_t n = 1; n <= 6; ++n) {
        SCOPED_TRACE(n);
        test::MemoryFiles failing{clock};
        failing.put(file, before);
        clsIniFile store{failing, file};
        failing.fail_call(n, FileResult::failed);
        const bool read = store.read();
        const bool first = store.SaveSetting("S", "k", "2");
        const std::string between = failing.contents(file);
        EXPECT_TRUE(between == before || between == "; mine\r\n[S]\r\nk=2\r\na=0\r\n") << between;
        const bool second = store.SaveSetting("S", "b", "3");
        const bool third = store.DeleteSection("T");
        EXPECT_EQ(read + first + second + third, 3) << "one failed call fails one operation";
        EXPECT_EQ(store.GetSetting("S", "k", ""), "2");
        EXPECT_EQ(store.GetSetting("S", "b", ""), "3");
        EXPECT_TRUE(store.SaveSetting("S", "c", "4"));
        EXPECT_TRUE(store.SaveSetting("S", "c", "4"));
        EXPECT_EQ(failing.contents(file), "; mine\r\n[S]\r\nk=2\r\na=0\r\nb=3\r\nc=4\r\n");
    }
}

TEST_F(IniFile, OfGarbageGivesDefaultsAndKeepsTheGarbage) {
    std::string garbage;
    for (unsigned n = 0; n < 5000; ++n) garbage += static_cast<char>(n * n * 31 % 251);
    given(garbage);
    EXPECT_EQ(ini.GetSetting("Main", "HasRun", "d"), "d");
    EXPECT_TRUE(ini.SaveSetting("Main", "HasRun", "True"));
    EXPECT_EQ(ini.GetSetting("Main", "HasRun", "d"), "True");
    EXPECT_EQ(bytes(), garbage + "\r\n[Main]\r\nHasRun=True\r\n");
}

TEST_F(IniFile, OfTenMegabytesIsReadAndWrittenLikeAnyOther) {
    std::string big = "[Main]\r\n";
    while (big.size() < 10'000'000) big += "key" + std::to_string(big.size()) + "=some value of some length\r\n";
    given(big + "[Other]\r\nk=v\r\n");
    EXPECT_EQ(ini.GetSetting("Other", "k", ""), "v");
    EXPECT_EQ(ini.GetSetting("Main", "key8", ""), "some value of some length");
    EXPECT_TRUE(ini.SaveSettings({{"Main", "HasRun", "True"}, {"Other", "k", "w"}}));
    EXPECT_EQ(bytes(), big + "HasRun=True\r\n[Other]\r\nk=w\r\n");
}

TEST_F(IniFile, OfOneEndlessLineIsRead) {
    given("[Main]\r\nHasRun=True\r\n" + std::string(1'000'000, 'x'));
    EXPECT_EQ(ini.GetSetting("Main", "HasRun", ""), "True");
}

}  // namespace
}  // namespace nimbry
