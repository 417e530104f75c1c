// What a step printed, for tests: the text, and "<stopped>" at its end when the step ended the run.
#pragma once

#include "run_control/console.h"
#include "run_control/exits.h"

#include <string>
#include <utility>

template <typename Step>
std::string consoleOf(Step&& step, std::string answers = {}) {
    ConsoleCapture capture(std::move(answers));
    std::string stopped;
    try {
        std::forward<Step>(step)();
    } catch (const RunStopped&) {
        stopped = "<stopped>";
    }
    return capture.text() + stopped;
}
