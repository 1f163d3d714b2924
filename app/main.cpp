#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>
#include <system_error>

#include "Failure.hpp"
#include "commands.hpp"
#include "host.hpp"
#include "options.hpp"
#include "terminal_text.hpp"

namespace {

std::string answer(const app::Options& options) {
    switch (options.command) {
        case app::Command::showRoots:
            return app::showRoots(options);
        case app::Command::listProducts:
            return app::listProducts(options);
        case app::Command::findProduct:
            return app::findProduct(options);
        case app::Command::printText:
            break;
    }
    return options.text;
}

void writeOut(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
        throw std::system_error(errno, std::generic_category(), "Can't write to standard output");
    }
}

int end(app::ExitStatus status, const std::string& message) {
    std::cerr << message;
    return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const app::Options options = app::readOptions(argc, argv);
        app::configureHost(options);
        writeOut(answer(options));
        return static_cast<int>(app::ExitStatus::done);
    } catch (const app::Failure& failure) {
        return end(failure.status(), failure.what());
    } catch (const std::exception& e) {
        return end(app::ExitStatus::failure, app::printable(e.what()) + '\n');
    }
}
