// SPDX-License-Identifier: MIT
// Every kind of tray item against the contract of them all.
#include "Tests/Contracts/Tray/EmbeddedStage.h"
#include "Tests/Contracts/Tray/StatusNotifierStage.h"
#include "Tests/Support/Contracts/StatusItemContract.h"

namespace velmora {
namespace {

std::unique_ptr<StatusItemStage> sessionBus() {
    return std::make_unique<testing::StatusNotifierStage>();
}

std::unique_ptr<StatusItemStage> panel(int top, bool translucent) {
    auto stage = std::make_unique<testing::EmbeddedStage>();
    stage->options.top = top;
    stage->options.translucent = translucent;
    return stage;
}

INSTANTIATE_TEST_SUITE_P(Tray, StatusItemContract,
                         ::testing::Values(StatusItemSubject{"session bus", sessionBus},
                                           StatusItemSubject{"panel at the top",
                                                             [] { return panel(0, false); }},
                                           StatusItemSubject{"translucent panel at the bottom",
                                                             [] { return panel(670, true); }}));

}  // namespace
}  // namespace velmora
