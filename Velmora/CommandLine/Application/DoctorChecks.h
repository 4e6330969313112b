// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/CommandLine/Application/DoctorFinding.h"
#include "Velmora/Platform/SystemInspection.h"

namespace velmora::doctor {

/// One check for each part that the program needs. Each depends on nothing but the inspection.

DoctorFinding checkDisplay(const SystemInspection& system);
DoctorFinding checkScreenCapture(const SystemInspection& system);
DoctorFinding checkCompositor(const SystemInspection& system);
DoctorFinding checkSessionBus(const SystemInspection& system);
DoctorFinding checkAccessibilityBus(const SystemInspection& system);
DoctorFinding checkAccessibility(const SystemInspection& system);
DoctorFinding checkTray(const SystemInspection& system);
DoctorFinding checkDictionary(const SystemInspection& system);
DoctorFinding checkRecognition(const SystemInspection& system);
DoctorFinding checkSpeech(const SystemInspection& system);
DoctorFinding checkVoice(const SystemInspection& system);
DoctorFinding checkSound(const SystemInspection& system);

/// All of them, in the order in which they are told.
std::vector<DoctorFinding> checkAll(const SystemInspection& system);

}  // namespace velmora::doctor
