#include "runtime/Shares.h"

#include "runtime/Directory.h"
#include "runtime/FileSystemObject.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class SharesTest : public fixture::ComputerFixture {};

TEST_F(SharesTest, EverySpellingOfAServerAndOfADeviceLeadsToAShare) {
  for (const char* path : {"\\\\server\\share\\a.dll",  "//server/share/a.dll",
                           "\\/server\\share",          "/\\server/share",
                           "\\\\server@SSL\\share",     "\\\\127.0.0.1\\c$",
                           "  \\\\server\\share",       "\\\\",
                           "\\\\?\\UNC\\server\\share", "\\\\?\\unc\\server\\share",
                           "//?/UNC/server/share",      "\\\\.\\UNC\\server\\share",
                           "\\??\\UNC\\server\\share",  "\\\\?\\GLOBALROOT\\Device\\Mup\\s",
                           "\\\\.\\pipe\\name",         "//./pipe/name",
                           "\\\\?\\pipe\\name",         "\\\\.\\C:\\..\\UNC\\server",
                           "\\\\.\\PhysicalDrive0",     "\\\\.\\mailslot\\x"}) {
    EXPECT_TRUE(leadsToShare(path)) << path;
    EXPECT_FALSE(mayBeOpened(path, Shares::Refused)) << path;
    EXPECT_TRUE(mayBeOpened(path, Shares::Asked)) << path;
  }
}

TEST_F(SharesTest, APathOfThisComputerDoesNot) {
  for (const char* path :
       {"", "C:\\Windows", "c:/windows/a.dll", "C:relative", "a.dll", "\\Windows\\a.dll",
        "%windir%\\a.dll", "\\\\?\\C:\\Windows\\a.dll", "//./C:/Windows", "\\??\\C:\\Windows",
        "\\\\?\\Volume{01234567-89ab-cdef-0123-456789abcdef}\\a.dll", "C:\\\\server\\share",
        "http://server/a"}) {
    EXPECT_FALSE(leadsToShare(path)) << path;
  }
}

TEST_F(SharesTest, APathEndsAtItsFirstNul) {
  EXPECT_TRUE(leadsToShare(std::string_view("\\\\s\0x", 5)));
  EXPECT_FALSE(leadsToShare(std::string_view("C:\\a\0\\\\s", 8)));
}

TEST_F(SharesTest, WhatMayNotBeFollowedIsNotThere) {
  makeFile("C:\\SharesTest\\a.txt");
  EXPECT_EQ(Dir("C:\\SharesTest\\a.txt"), "a.txt");
  EXPECT_EQ(Dir("\\\\.\\C:\\..\\C:\\SharesTest\\a.txt"), "");
  EXPECT_FALSE(fileSystemObject::fileExists("\\\\server\\share\\a.txt"));
  EXPECT_FALSE(fileSystemObject::folderExists("\\\\server\\share"));
}

}  // namespace
}  // namespace zelvreg
