#include <exception>
#include <iostream>

#include "Failure.hpp"
#include "answer.hpp"
#include "check/check.hpp"
#include "commands.hpp"
#include "explain.hpp"
#include "host.hpp"
#include "options.hpp"
#include "output.hpp"
#include "terminal_text.hpp"

// The command docproducts: reads the command line, configures the host and runs one command. Every failure ends here,
// as a message on standard error and an exit status.

namespace {

using app::Command;
using app::ExitStatus;

ExitStatus run(const app::Options& options) {
    switch (options.command) {
        case Command::showRoots:
            return app::showRoots(options);
        case Command::listProducts:
            return app::listProducts(options);
        case Command::findProduct:
            return app::findProduct(options);
        case Command::explain:
            return app::explain(options);
        case Command::checkCatalogues:
            return app::checkCatalogues(options);
        case Command::printText:
            break;
    }
    app::print(options.text);
    return ExitStatus::done;
}

ExitStatus statusOf(const std::exception& e) {
    const auto* const failure = dynamic_cast<const app::Failure*>(&e);
    return failure != nullptr ? failure->status() : ExitStatus::failure;
}

// Runs the command until all its output is written. With --json even a failure has an answer.
ExitStatus runToEnd(const app::Options& options) {
    try {
        app::configureHost(options);
        const ExitStatus status = run(options);
        app::flushOutput();
        return status;
    } catch (const std::exception& e) {
        if (options.json) {
            app::printJson(app::answerOf(options.commandName, statusOf(e), e.what()));
            app::flushOutput();
        }
        throw;
    }
}

int end(ExitStatus status, const std::string& message) {
    std::cerr << message;
    return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return static_cast<int>(runToEnd(app::readOptions(argc, argv)));
    } catch (const app::Failure& failure) {
        return end(failure.status(), failure.what());
    } catch (const std::exception& e) {
        return end(ExitStatus::failure, app::printable(e.what()) + '\n');
    }
}
