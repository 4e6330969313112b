// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiApplications.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiBudget.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiGrant.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiWorker.h"

namespace velmora {

/// The accessibility bus for the whole program: its worker thread, what lives on that, and the
/// state of the grant. Elements hold it weakly and read nothing once it is gone.
class AtSpiService {
  public:
    /// What the jobs work on; only the worker thread touches it.
    struct Core {
        explicit Core(AtSpiGrant& grant) : bus(grant), applications(bus) {}
        AtSpiBus bus;
        AtSpiApplications applications;
    };

    /// Begins to connect, and waits a moment for the first state of the grant.
    AtSpiService();
    ~AtSpiService();
    AtSpiService(const AtSpiService&) = delete;
    AtSpiService& operator=(const AtSpiService&) = delete;

    const AtSpiGrant& grant() const { return grant_; }

    /// Waits until the first attempt to connect is over, or for this long.
    void awaitConnection(std::chrono::milliseconds patience);

    /// Whether those answer who bring programs and their assistive programs together. Where that
    /// is not known after this time they are silent.
    AtSpiPresence presence(std::chrono::milliseconds patience);

    /// Calls this on the worker thread each time that the accessibility bus has been connected to;
    /// also when it is already.
    void observeConnections(std::function<void()> observer);

    /// Switches accessibility on and tells whether the grant is given then, after 200 ms at most.
    bool switchOn();

    /// Runs a job that asks other programs, as long as the budget lasts (on any thread but the
    /// budget's own: 20 ms), and gives its answer or a default one. The job owns what it uses.
    template <typename Answer>
    Answer ask(AtSpiBudget& budget, std::function<Answer(Core&, AtSpiDeadline&)> job) {
        const bool isMine = budget.isMine();
        const auto patience = isMine ? budget.left() : AtSpiBudget::forMainThread;
        if (patience.count() <= 0) {
            return {};
        }
        AtSpiDeadline deadline(patience, AtSpiBudget::perCall,
                               isMine ? budget.purpose() : AtSpiPurpose::mainThread);
        const auto begin = AtSpiDeadline::Clock::now();
        std::optional<Answer> answer = worker_.run<Answer>(
            patience, [this, deadline, job = std::move(job)]() mutable -> Answer {
                return core_ && core_->bus.connectNow() ? job(*core_, deadline) : Answer{};
            });
        if (isMine) {
            budget.spend(std::chrono::duration_cast<std::chrono::microseconds>(
                AtSpiDeadline::Clock::now() - begin));
        }
        return answer ? std::move(*answer) : Answer{};
    }

  private:
    AtSpiGrant grant_;
    std::unique_ptr<Core> core_;
    AtSpiWorker worker_;
};

}  // namespace velmora
