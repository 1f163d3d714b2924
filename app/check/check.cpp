#include "check/check.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

#include "catalogue.hpp"
#include "check/examine.hpp"
#include "check/report_json.hpp"
#include "check/report_text.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "obstacle.hpp"
#include "options.hpp"
#include "output.hpp"
#include "terminal_text.hpp"

namespace app {

namespace check {

namespace {

constexpr const char* s_standardInput = "-";

std::string readFile(const std::string& file) {
    if (file == s_standardInput) {
        return {std::istreambuf_iterator<char>(std::cin), {}};
    }
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The catalogue in force. Throws Failure if there is none.
std::string catalogueInForce(const Options& options) {
    for (const CataloguePlace& place : cataloguePlaces(options)) {
        if (fl::filesystem::exists(fl::i18n::to_ustring(place.file))) {
            return place.file;
        }
    }
    reportMissing(options);
}

// Of two catalogues in different roots, only the one in the documentation root is read.
void reportShadowed(const std::string& file, const Options& options, Problems& problems) {
    const auto places = cataloguePlaces(options);
    const std::string& inDataRoot = places.back().file;
    if (file == places[1].file && file != inDataRoot && fl::filesystem::exists(fl::i18n::to_ustring(inDataRoot))) {
        problems.add({&code("shadowed-catalogue"), {}, inDataRoot + " isn't read, because this catalogue is", {}});
    }
}

// The data root to look into; empty if there is none to look into.
std::string dataRootFor(const Options& options) {
    const bool isNamed = options.check.files.empty() || options.docDataRoot || options.installRoot;
    return options.check.noFiles || !isNamed ? ""
                                             : to_string(doc_products_shared::Docroot::getInstance().getDocDataRoot());
}

ExitStatus statusOf(const Problems& problems, bool isStrict) {
    const bool isBad = problems.count(Severity::error) > 0 || (isStrict && problems.count(Severity::warning) > 0);
    return isBad ? ExitStatus::malformedCatalogue : ExitStatus::done;
}

// Why the file can't be read; empty if it can.
std::string unreadable(const std::string& file) {
    std::error_code unreachable;
    return std::filesystem::exists(file, unreachable) ? obstacle(file) : "does not exist";
}

// Checks a file. Throws Failure if it can't be read.
Report checkFile(const std::string& file, const Options& options) {
    if (const std::string reason = file == s_standardInput ? "" : unreadable(file); !reason.empty()) {
        throw Failure(ExitStatus::failure, printable("Can't read " + file + ": " + reason) + '\n');
    }
    Report report = examine(file, readFile(file), dataRootFor(options), options.check.policy);
    if (options.check.files.empty()) {
        reportShadowed(file, options, report.problems);
    }
    return report;
}

// Checks all files. Those that can't be read are reported on standard error.
std::vector<Report> checkFiles(const std::vector<std::string>& files, const Options& options, ExitStatus& status) {
    std::vector<Report> reports;
    for (const std::string& file : files) {
        try {
            reports.push_back(checkFile(file, options));
            status = std::max(status, statusOf(reports.back().problems, options.check.isStrict));
        } catch (const Failure& failure) {
            std::cerr << failure.what();
            status = std::max(status, failure.status());
        }
    }
    return reports;
}

void write(const std::vector<Report>& reports, const Options& options) {
    if (options.check.format != "text") {
        return print((options.check.format == "json" ? jsonOf(reports) : sarifOf(reports)).dump(2) + '\n');
    }
    for (const Report& report : reports) {
        writeText(print, report, showsColor(options.color));
    }
}

ExitStatus explain(const std::string& name) {
    const Code& found = *findCode(name);
    print(fmt::format("{}: {}, {}\n\n{}", found.name, severityNames.at(static_cast<std::size_t>(found.severity)),
                      found.summary, found.explanation));
    return ExitStatus::done;
}

}  // namespace

}  // namespace check

ExitStatus checkCatalogues(const Options& options) {
    if (!options.check.explainedCode.empty()) {
        return check::explain(options.check.explainedCode);
    }
    const auto& named = options.check.files;
    auto status = ExitStatus::done;
    const auto reports =
        check::checkFiles(named.empty() ? std::vector{check::catalogueInForce(options)} : named, options, status);
    check::write(reports, options);
    return status;
}

}  // namespace app
