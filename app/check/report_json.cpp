#include "check/report_json.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <string>

#include "doc_products_shared/version.hpp"

namespace app::check {

namespace {

using Located = std::map<std::size_t, LineColumn>;

void setPlace(Json& object, const Place& place, const Located& located) {
    const LineColumn& begin = located.at(place.offset);
    const LineColumn& end = located.at(place.offset + place.length);
    object.update({{"line", begin.line},
                   {"column", begin.column},
                   {"end_line", end.line},
                   {"end_column", end.column},
                   {"offset", place.offset},
                   {"length", place.length}});
}

Json relatedOf(const Related& related, const Located& located) {
    Json object;
    setText(object, "message", related.message);
    setPlace(object, related.place, located);
    return object;
}

Json problemOf(const Problem& problem, const Report& report, const Located& located) {
    Json object = {{"severity", nameOf(report.problems.severityOf(*problem.code))}, {"code", problem.code->name}};
    setText(object, "message", problem.message);
    setText(object, "pointer", problem.pointer);
    setPlace(object, problem.place, located);
    object["related"] = arrayOf(problem.related, [&](const Related& related) { return relatedOf(related, located); });
    object["looked_at"] = arrayOf(problem.lookedAt, [](const std::string& path) { return placeOf(path, false); });
    return object;
}

Json fileOf(const Report& report) {
    const Located located = locate(report.text, offsetsOf(report.problems));
    Json object;
    setText(object, "file", report.file);
    setTextOrNull(object, "error", report.failure);
    setTextOrNull(object, "data_root", report.dataRoot);
    object["products"] = report.products;
    for (const Severity severity : severities) {
        object["counts"][nameOf(severity)] = report.problems.count(severity);
    }
    object["omitted"] = report.problems.omitted();
    object["problems"] =
        arrayOf(report.problems.kept(), [&](const Problem* problem) { return problemOf(*problem, report, located); });
    return object;
}

// SARIF calls an info a note.
std::string levelOf(Severity severity) {
    return severity == Severity::info ? "note" : nameOf(severity);
}

Json ruleOf(const Code& code) {
    return {{"id", code.name},
            {"shortDescription", {{"text", code.summary}}},
            {"fullDescription", {{"text", code.explanation}}},
            {"defaultConfiguration", {{"level", levelOf(code.severity)}}}};
}

// A relative reference or a file URI: bytes that a URI can't hold are escaped.
std::string uriOf(const std::string& file) {
    constexpr std::string_view s_plain = "-._~/!$&'()*+,;=@";
    std::string uri;
    for (const char byte : file) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(byte)) != 0 || s_plain.find(byte) != s_plain.npos;
        uri += isPlain ? std::string(1, byte) : fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    }
    return uri.starts_with('/') ? "file://" + uri : uri;
}

Json locationOf(const Report& report, const Place& place, const Located& located) {
    const LineColumn& begin = located.at(place.offset);
    const LineColumn& end = located.at(place.offset + place.length);
    return {{"physicalLocation",
             {{"artifactLocation", {{"uri", uriOf(report.file)}}},
              {"region",
               {{"startLine", begin.line},
                {"startColumn", begin.column},
                {"endLine", end.line},
                {"endColumn", end.column},
                {"byteOffset", place.offset},
                {"byteLength", place.length}}}}}};
}

Json messageOf(const std::string& text) {
    Json message;
    setText(message, "text", text);
    message.erase("lossy");
    return message;
}

Json resultOf(const Problem& problem, const Report& report, const Located& located) {
    Json location = locationOf(report, problem.place, located);
    location["logicalLocations"] =
        Json::array({Json::object({{"fullyQualifiedName", messageOf(problem.pointer)["text"]}})});
    Json result = {{"ruleId", problem.code->name},
                   {"level", levelOf(report.problems.severityOf(*problem.code))},
                   {"message", messageOf(problem.message)},
                   {"locations", Json::array({location})}};
    for (const Related& related : problem.related) {
        Json place = locationOf(report, related.place, located);
        place["message"] = messageOf(related.message);
        result["relatedLocations"].push_back(place);
    }
    return result;
}

Json notificationOf(const char* level, const std::string& text) {
    return {{"level", level}, {"message", messageOf(text)}};
}

// What the results don't say.
Json invocationOf(const Findings& findings) {
    const std::string failures = failuresOf(findings);
    Json notifications = Json::array();
    if (!failures.empty()) {
        notifications.push_back(notificationOf("error", failures));
    }
    for (const Report& report : findings.reports) {
        if (const std::size_t omitted = report.problems.omitted(); omitted > 0) {
            notifications.push_back(
                notificationOf("warning", fmt::format("{}: and {} more problems", report.file, omitted)));
        }
    }
    return {{"executionSuccessful", failures.empty()}, {"toolExecutionNotifications", notifications}};
}

}  // namespace

Json jsonOf(const Findings& findings) {
    Json answer = answerOf("check", findings.status, failuresOf(findings));
    answer["files"] = arrayOf(findings.reports, fileOf);
    return answer;
}

Json sarifOf(const Findings& findings) {
    Json results = Json::array();
    for (const Report& report : findings.reports) {
        const Located located = locate(report.text, offsetsOf(report.problems));
        for (const Problem* problem : report.problems.kept()) {
            results.push_back(resultOf(*problem, report, located));
        }
    }
    const Json driver = {{"name", "docproducts"}, {"version", DOCPRODUCTS_VERSION}, {"rules", arrayOf(codes, ruleOf)}};
    const Json run = {{"tool", {{"driver", driver}}},
                      {"invocations", Json::array({invocationOf(findings)})},
                      {"columnKind", "unicodeCodePoints"},
                      {"results", results}};
    return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
            {"version", "2.1.0"},
            {"runs", Json::array({run})}};
}

}  // namespace app::check
