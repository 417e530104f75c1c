// What a step printed, for tests: the text, and "<stopped>" at its end when the step ended the run.
#pragma once

#include "services/console.h"
#include "services/exits.h"

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
