// The version in the headers is that of the library's file.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "quillmar/Version.h"

TEST(VersionTest, TheFileBearsTheVersionOfTheHeaders) {
  const char* file = "C:\\Vantorel\\Quillmar\\Quillmar.dll";
  DWORD ignored = 0;
  std::vector<char> resource(GetFileVersionInfoSizeA(file, &ignored));
  ASSERT_TRUE(GetFileVersionInfoA(file, 0, static_cast<DWORD>(resource.size()), resource.data()));
  VS_FIXEDFILEINFO* version = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueA(resource.data(), "\\", reinterpret_cast<void**>(&version), &size));
  EXPECT_EQ(HIWORD(version->dwFileVersionMS), QM_VERSION_MAJOR);
  EXPECT_EQ(LOWORD(version->dwFileVersionMS), QM_VERSION_MINOR);
  EXPECT_EQ(HIWORD(version->dwFileVersionLS), QM_VERSION_PATCH);
}
