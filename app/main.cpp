#include <exception>
#include <iostream>

#include "Failure.hpp"
#include "check/check.hpp"
#include "commands.hpp"
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
        case Command::checkCatalogues:
            return app::checkCatalogues(options);
        case Command::printText:
            break;
    }
    app::print(options.text);
    return ExitStatus::done;
}

int end(ExitStatus status, const std::string& message) {
    std::cerr << message;
    return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const app::Options options = app::readOptions(argc, argv);
        app::configureHost(options);
        const ExitStatus status = run(options);
        app::flushOutput();
        return static_cast<int>(status);
    } catch (const app::Failure& failure) {
        return end(failure.status(), failure.what());
    } catch (const std::exception& e) {
        return end(ExitStatus::failure, app::printable(e.what()) + '\n');
    }
}
