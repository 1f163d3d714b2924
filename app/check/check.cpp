#include "check/check.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
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
#include "table.hpp"
#include "terminal_text.hpp"

namespace app {

namespace check {

namespace {

constexpr const char* s_standardInput = "-";

// Why the file can't be read; empty if it can. It is read once, so it may be a pipe.
std::string obstacleTo(const std::string& file) {
    std::error_code unreachable;
    if (file == s_standardInput || std::filesystem::is_fifo(file, unreachable)) {
        return {};
    }
    return std::filesystem::exists(file, unreachable) ? obstacle(file) : "does not exist";
}

// Reads a file. Throws std::system_error.
std::string readFile(const std::string& file) {
    if (file == s_standardInput) {
        std::string text(std::istreambuf_iterator<char>(std::cin), {});
        if (std::ferror(stdin) != 0) {
            throw std::system_error(errno, std::generic_category());
        }
        return text;
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

ExitStatus statusOf(const Report& report, bool isStrict) {
    const auto& problems = report.problems;
    const bool isBad = problems.count(Severity::error) > 0 || (isStrict && problems.count(Severity::warning) > 0);
    return !report.failure.empty() ? ExitStatus::failure : isBad ? ExitStatus::malformedCatalogue : ExitStatus::done;
}

Report checkFile(const std::string& file, const Options& options) {
    Report failed{file, obstacleTo(file), {}, {}, 0, Problems(options.check.policy)};
    if (!failed.failure.empty()) {
        return failed;
    }
    try {
        return examine(file, readFile(file), dataRootFor(options), options.check.policy);
    } catch (const std::system_error& e) {
        failed.failure = e.code().message();
    }
    return failed;
}

// Checks the files, or the catalogue in force. Throws Failure if there is none.
std::vector<Report> checkFiles(const Options& options) {
    const auto& named = options.check.files;
    std::vector<Report> reports;
    for (const std::string& file : named.empty() ? std::vector{catalogueInForce(options)} : named) {
        reports.push_back(checkFile(file, options));
    }
    if (named.empty()) {
        reportShadowed(reports.front().file, options, reports.front().problems);
    }
    return reports;
}

Findings find(const Options& options) {
    Findings findings;
    try {
        findings.reports = checkFiles(options);
    } catch (const Failure& failure) {
        findings.failure = failure.what();
        findings.status = failure.status();
    }
    for (const Report& report : findings.reports) {
        findings.status = std::max(findings.status, statusOf(report, options.check.isStrict));
    }
    return findings;
}

void write(const Findings& findings, const Options& options) {
    if (options.check.format != "text") {
        return printJson(options.check.format == "json" ? jsonOf(findings) : sarifOf(findings));
    }
    for (const Report& report : findings.reports) {
        if (report.failure.empty()) {
            writeText(print, report, showsColor(options.color));
        }
    }
}

void explain(const std::string& name) {
    if (const Code* found = findCode(name)) {
        return print(
            fmt::format("{}: {}, {}\n\n{}", found->name, nameOf(found->severity), found->summary, found->explanation));
    }
    writeTable(print, {}, codes.size(), [](std::size_t i) {
        return Row{{codes.at(i).name, nameOf(codes.at(i).severity), codes.at(i).summary}};
    });
}

}  // namespace

}  // namespace check

ExitStatus checkCatalogues(const Options& options) {
    if (options.check.explainedCode) {
        check::explain(*options.check.explainedCode);
        return ExitStatus::done;
    }
    const check::Findings findings = check::find(options);
    check::write(findings, options);
    flushOutput();  // before any message on standard error
    std::cerr << check::failuresOf(findings);
    return findings.status;
}

}  // namespace app
