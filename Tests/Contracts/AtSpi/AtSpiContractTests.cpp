// SPDX-License-Identifier: MIT
#include <memory>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Tests/Support/Contracts/AccessibilityContract.h"

// What holds for the elements of every backend, over a program of a real toolkit.
namespace velmora {
namespace {

/// A desktop with the program on it, which lives as long as the system that is handed out.
struct Stage {
    Stage() {
        const auto file = bench.desktop().writeFile("sample.txt", test::contractText);
        bench.start({"/usr/bin/python3", std::string(VELMORA_FIXTURES) + "/Toolkits/gtk3_sample.py",
                     file.string()});
        if (bench.elementShowing("学习") == nullptr) {
            throw std::runtime_error("the text is not shown");
        }
    }
    test::AtSpiBench bench;
};

std::shared_ptr<AccessibilitySystem> makeSystem() {
    auto stage = std::make_shared<Stage>();
    AccessibilitySystem* system = &stage->bench.system();
    return {std::move(stage), system};
}

INSTANTIATE_TEST_SUITE_P(AtSpi, AccessibilityContract,
                         ::testing::Values(AccessibilitySubject{
                             "atspi", makeSystem, {240, 150}, "学习"}));

}  // namespace
}  // namespace velmora
