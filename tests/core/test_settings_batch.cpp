// The store's changes are written once an operation, not once a key.
#include <gtest/gtest.h>

#include "core/fs.h"
#include "core/settings.h"
#include "core/settings_store.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

// A store whose writing out can be made to fail, as a full disk would.
class FailingPersist : public MemorySettings {
 public:
  std::string failure;
  int persisted = 0;

 protected:
  std::string Persist() override {
    ++persisted;
    return failure;
  }
};

TEST(SettingsBatch, OutsideABatchEveryChangeIsWrittenAtOnce) {
  MemorySettings s;
  s.Set(kSecParams, "a", "1");
  s.Set(kSecParams, "b", "2");
  s.RemoveSection(kSecSizes);
  EXPECT_EQ(s.Writes(), 3);
}

TEST(SettingsBatch, ABatchWritesItsChangesOnceAtItsEnd) {
  MemorySettings s;
  s.BeginBatch();
  for (int i = 0; i < 12; ++i) s.Set(kSecParams, "k" + std::to_string(i), "v");
  s.RemoveSection(kSecSizes);
  EXPECT_EQ(s.Writes(), 0);
  EXPECT_EQ(s.EndBatch(), "");
  EXPECT_EQ(s.Writes(), 1);
  EXPECT_EQ(s.Get(kSecParams, "k11"), std::optional<std::string>("v"));
}

TEST(SettingsBatch, NestedBatchesWriteOnlyAtTheOutermostEnd) {
  MemorySettings s;
  {
    SettingsBatch outer(s);
    s.Set(kSecParams, "a", "1");
    {
      SettingsBatch inner(s);
      s.Set(kSecParams, "b", "2");
    }
    EXPECT_EQ(s.Writes(), 0);
    s.Set(kSecParams, "c", "3");
  }
  EXPECT_EQ(s.Writes(), 1);
}

TEST(SettingsBatch, ABatchWithoutChangesWritesNothing) {
  MemorySettings s;
  { SettingsBatch b(s); }
  EXPECT_EQ(s.Writes(), 0);
  EXPECT_EQ(s.Flush(), "");
  EXPECT_EQ(s.Writes(), 0);
}

TEST(SettingsBatch, SetManyIsOneWrite) {
  MemorySettings s;
  EXPECT_EQ(s.SetMany(kSecRecent, {{"File1", "a"}, {"File2", "b"}, {"File3", "c"}}), "");
  EXPECT_EQ(s.Writes(), 1);
}

TEST(SettingsBatch, TheRecentListAndAParamAreOneWriteInsideABatch) {
  MemorySettings s;
  test::ScriptedPrompter quiet;
  ProjectView view;
  DiskFileSystem fs;
  Env env{fs, s, quiet, view, "/tmp"};
  {
    SettingsBatch b(s);
    WriteRecent(env, "/a.kpn");
    SetParam(env, "sProjectsPath", "/p");
    SetParam(env, "iGridX", "7");
  }
  EXPECT_EQ(s.Writes(), 1);
  EXPECT_EQ(ReadRecentRaw(env)[0], "/a.kpn");
}

TEST(SettingsBatch, ARefusedChangeIsNotCountedAsAWrite) {
  MemorySettings s;
  s.failWrites = true;
  EXPECT_NE(s.Set(kSecParams, "a", "1"), "");
  EXPECT_EQ(s.Writes(), 0);
}

TEST(SettingsBatch, AFailedWriteAtTheEndOfABatchIsReported) {
  FailingPersist s;
  s.failure = "No space left on device";
  std::string told;
  s.onWriteFailure = [&told](const std::string& f) { told = f; };
  {
    SettingsBatch b(s);
    s.Set(kSecParams, "a", "1");
    s.Set(kSecParams, "b", "2");
  }
  EXPECT_EQ(s.persisted, 1);
  EXPECT_EQ(told, "No space left on device");
}

TEST(SettingsBatch, OutsideABatchAFailedWriteIsTheChangesAnswer) {
  FailingPersist s;
  s.failure = "No space left on device";
  EXPECT_EQ(s.Set(kSecParams, "a", "1"), "No space left on device");
}

}  // namespace
}  // namespace kp
