// SPDX-License-Identifier: GPL-3.0-or-later
#include "remote/storage.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace remote {
namespace {

namespace fs = std::filesystem;

struct Storage_test : testing::Test {
  // Each test runs in a process of its own, beside others.
  const fs::path folder = fs::path(testing::TempDir()) / ("storage-" + std::to_string(getpid()));
  const fs::path file = folder / "file";

  Storage_test() { fs::create_directory(folder); }
  ~Storage_test() override { fs::remove_all(folder); }
  static bool is_ours(std::string_view text) { return text.starts_with("ours"); }
  size_t files() const { return static_cast<size_t>(std::distance(fs::directory_iterator(folder), {})); }
};

TEST_F(Storage_test, FileIsReplacedAsAWholeAndForItsOwnerAlone) {
  EXPECT_FALSE(read_file(file));
  write_file(file, "ours 1", is_ours);
  std::ofstream(file.string() + ".draft") << "of a killed program";
  write_file(file, "ours 2", is_ours);
  EXPECT_EQ(read_file(file), "ours 2");
  EXPECT_EQ(files(), 1U);
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(Storage_test, AnotherProgramsFileStays) {
  std::ofstream(file) << "theirs";
  EXPECT_THROW(write_file(file, "ours", is_ours), Storage_error);
  EXPECT_EQ(read_file(file), "theirs");
  std::ofstream(file, std::ios::trunc).close();  // what a power cut can leave of a file
  write_file(file, "ours", is_ours);
  EXPECT_EQ(read_file(file), "ours");
}

TEST_F(Storage_test, FailureLeavesNothingBehindAndNamesTheFile) {
  EXPECT_THROW(write_file(folder / "none" / "file", "ours", is_ours), Storage_error);
  fs::create_directory(file);
  try {
    write_file(file, "ours", is_ours);
    FAIL() << "a folder was written";
  } catch (const Storage_error& error) {
    EXPECT_EQ(std::string_view(error.what()).substr(0, file.string().size()), file.string());
  }
  EXPECT_EQ(files(), 1U);
}

TEST(Last, IsReadFromItsOwnTextAlone) {
  for (const Last& last : {Last{}, Last{.play = Play{17333, 12, 33}}, Last{.play = Play{1, 2, 3}, .volume = Volume{9}}})
    EXPECT_EQ(parse_last(to_text(last)), last);
  for (const char* const text :
       {"\n", "{}", R"({"order":"find"})", "garbage\n", "{\"order\":\"volume\",\"level\":9}\nx"})
    EXPECT_FALSE(parse_last(text)) << text;
}

}  // namespace
}  // namespace remote
