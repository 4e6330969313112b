// SPDX-License-Identifier: MIT
#include "Tests/Contracts/AtSpi/AtSpiToolkitTest.h"

// Programs that draw everything twice as large and count in units of their own.
namespace velmora::test {
namespace {

class AtSpiScaled : public AtSpiToolkitTest {
  protected:
    void SetUp() override {}
    void TearDown() override {
        AtSpiToolkitTest::TearDown();
        stop();
    }

    static void startSample(std::vector<std::string> command,
                            const ChildProcess::Environment& scale) {
        bench = std::make_unique<AtSpiBench>();
        command.push_back(bench->desktop().writeFile("sample.txt", contractText).string());
        bench->start(std::move(command), scale);
    }
};

TEST_F(AtSpiScaled, readsGtk3AtTwice) {
    startSample({"/usr/bin/python3", std::string(VELMORA_FIXTURES) + "/Toolkits/gtk3_sample.py"},
                {{"GDK_SCALE", "2"}});
    checkCharacter("国", "生命　", "　起源");
    checkEmptySpace("国");
}

TEST_F(AtSpiScaled, readsQt6AtTwice) {
    startSample({std::string(VELMORA_BUILD_FOLDER) + "/velmora_qt_sample"},
                {{"QT_SCALE_FACTOR", "2"}});
    checkCharacter("国", "生命　", "　起源");
    checkEmptySpace("国");
}

}  // namespace
}  // namespace velmora::test
