// The render tests draw text, which needs the GUI library's fonts: a
// QGuiApplication on the offscreen platform, no window.
#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
