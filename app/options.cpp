#include "options.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "Failure.hpp"
#include "doc_products_shared/version.hpp"
#include "log_sink.hpp"
#include "near_names.hpp"
#include "terminal_text.hpp"

namespace app {

namespace {

constexpr const char* s_footer =
    "Exit status:\n"
    "  0  done\n"
    "  1  failure, such as a file that can't be read\n"
    "  2  wrong usage\n"
    "  3  malformed catalogue\n"
    "  4  nothing found: a root doesn't exist, there is no catalogue, or no product has the name";

// The catalogue may be read twice, which a pipe or a device doesn't allow.
std::string regularFile(const std::string& name) {
    return std::filesystem::is_regular_file(name) ? "" : "Not a regular file: " + name;
}

std::string notEmpty(const std::string& text) {
    return text.empty() ? "Must not be empty" : "";
}

std::string wholeNumber(const std::string& text) {
    const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? "" : "Must be a whole number";
}

// Called for the main command and for each subcommand, so that these options may precede or follow the subcommand.
void addSharedOptions(CLI::App& app, Options& options) {
    const auto add = [&app](const char* name, std::optional<std::string>& value, const char* type, const char* text) {
        return app.add_option(name, value, text)->type_name(type)->take_last();
    };
    add("--install-root", options.installRoot, "DIR",
        "Install root; by default $VORLAN_ROOT, or else " DOCPRODUCTS_INSTALL_ROOT ", from this program's folder")
        ->check(notEmpty);
    add("--support-package-root", options.supportPackageRoot, "DIR",
        "Support-package root; by default support-packages in the install root")
        ->check(notEmpty);
    add("--doc-root", options.docRoot, "DIR", "Documentation root, as if set in the user's settings");
    add("--doc-data-root", options.docDataRoot, "DIR", "Data root, as if set in the user's settings");
    add("--catalogue", options.catalogue, "FILE", "Catalogue to read instead of the docset.json in a root")
        ->check(CLI::ExistingFile.description(""))
        ->check(regularFile);
    const auto addChoice = [&app](const char* name, std::string& value, const char* type, const char* text) {
        return app.add_option(name, value, text)->type_name(type)->take_last()->capture_default_str();
    };
    addChoice("--log", options.log, "LEVEL", "Write log records up to this level to standard error")
        ->check(CLI::IsMember(logNames()));
    addChoice("--color", options.color, "WHEN", "Emphasize headings and what is missing; auto: on a terminal")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

void addJson(CLI::App& command, Options& options) {
    command.add_flag("--json", options.json, "Print a JSON document instead");
}

// An option for scripts: the answer is only these texts.
void addRaw(CLI::App& command, Options& options, const char* name, bool& flag, const char* text) {
    CLI::Option* const raw = command.add_flag(name, flag, text)->excludes("--json");
    command.add_flag("-0,--null", options.endsWithNul, "End each with NUL instead of a line feed")->needs(raw);
}

CLI::App& addCommand(CLI::App& app, Options& options, const char* name, const char* text, Command command) {
    CLI::App& subcommand = *app.add_subcommand(name, text);
    subcommand.callback([&options, name, command] {
        options.commandName = name;
        options.command = command;
    });
    addSharedOptions(subcommand, options);
    return subcommand;
}

std::vector<std::string> codeNames() {
    std::vector<std::string> names(check::codes.size());
    std::transform(check::codes.begin(), check::codes.end(), names.begin(),
                   [](const check::Code& code) { return code.name; });
    return names;
}

// An error can't be ignored: the library refuses the catalogue.
std::string notAnError(const std::string& name) {
    return check::findCode(name)->severity == check::Severity::error ? name + " is an error, which can't be ignored"
                                                                     : "";
}

std::string codeName(const std::string& name) {
    return check::findCode(name) != nullptr ? "" : "Not a code: " + name + suggestion(nearNames(name, codeNames()));
}

void addCheck(CLI::App& app, Options& options) {
    CheckOptions& check = options.check;
    CLI::App& command =
        addCommand(app, options, "check", "Print what is wrong with catalogues", Command::checkCatalogues);
    const auto addCodes = [&](const char* name, std::set<std::string, std::less<>>& codes, const char* text) {
        return command
            .add_option_function<std::string>(
                name, [&](const std::string& code) { codes.insert(code); }, text)
            ->type_name("CODE")
            ->trigger_on_parse()
            ->check(codeName);
    };
    auto* const files =
        command.add_option("FILE", check.files, "Catalogues, - for standard input; by default the one in force")
            ->type_name("");
    command.add_flag("--strict", check.isStrict, "Fail after warnings too");
    command.add_flag("--no-files", check.noFiles, "Don't look for the products' files");
    addCodes("--ignore", check.policy.ignored, "Don't report a warning or an info; may be repeated")->check(notAnError);
    addCodes("--error", check.policy.errors, "Report as an error; may be repeated");
    command.add_option("--max", check.policy.most, "Report N problems of a file, the most severe ones; 0: all")
        ->type_name("N")
        ->take_last()
        ->capture_default_str()
        ->check(wholeNumber);
    auto* const format = command.add_option("--format", check.format, "Form of the report")
                             ->type_name("FORM")
                             ->take_last()
                             ->capture_default_str()
                             ->check(CLI::IsMember({"text", "json", "sarif"}));
    auto* const json = command
                           .add_flag_callback(
                               "--json", [&check] { check.format = "json"; }, "The same as --format json")
                           ->excludes(format);
    command
        .add_option("--explain", check.explainedCode, "Print what a code means and how to mend it; without CODE, all")
        ->type_name("[CODE]")
        ->expected(0, 1)
        ->take_last()
        ->excludes(files, format, json)
        ->check([](const std::string& name) { return name.empty() ? "" : codeName(name); });
}

void addCommands(CLI::App& app, Options& options) {
    CLI::App& roots =
        addCommand(app, options, "roots", "Print the documentation root and the data root", Command::showRoots);
    addJson(roots, options);
    addRaw(roots, options, "--path", options.path, "Print only the paths, as they are");
    CLI::App& list = addCommand(app, options, "list", "Print the installed products", Command::listProducts);
    addJson(list, options);
    list.add_flag("--all", options.all, "Print all products in the catalogue, and why each is installed or not");
    addRaw(list, options, "--names", options.names,
           "Print only the base codes and short names of all products, as they are");
    CLI::App& find = addCommand(app, options, "find", "Print the product with the given name, installed or not",
                                Command::findProduct);
    addJson(find, options);
    addRaw(find, options, "--path", options.path, "Print only the folder of its pages, existing or not, as it is");
    const char* const name = "Base code, short name, help location, alternative short name or display name";
    find.add_option("NAME", options.name, name)->type_name("")->required();
    CLI::App& explain = addCommand(app, options, "explain",
                                   "Print how the roots, the catalogue and a product were found", Command::explain);
    addJson(explain, options);
    explain.add_option("NAME", options.name, name)->type_name("");
    addCheck(app, options);
}

// The text of --help or --version.
std::string requestedText(const CLI::App& app, const CLI::Success& request) {
    std::ostringstream text;
    app.exit(request, text, text);
    return text.str();
}

// The names that an argument may be a misspelling of: the command's options, or the commands if there is none yet.
std::vector<std::string> candidates(const CLI::App& app, const std::string& argument) {
    const auto commands = app.get_subcommands();
    std::vector<std::string> names;
    if (argument.starts_with('-')) {
        for (const CLI::Option* option : (commands.empty() ? app : *commands.front()).get_options()) {
            names.push_back(option->get_lnames().empty() ? "" : option->get_name());
        }
    } else if (commands.empty()) {
        for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(command->get_name());
        }
    }
    return names;
}

// What to say of the first argument that wasn't understood.
std::string unexpected(const CLI::App& app) {
    auto arguments = app.remaining(true);
    std::erase(arguments, "--");
    const std::string name = arguments.front().substr(0, arguments.front().find('='));
    return "The argument was not expected: " + arguments.front() + suggestion(nearNames(name, candidates(app, name)));
}

// The arguments, last first, as the parser takes them. "--option=" becomes "--option" with an empty value: the parser
// would take the next argument as the value.
std::vector<std::string> reversedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool areOptions = true;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        areOptions = areOptions && argument != "--";
        const bool hasNoValue = areOptions && argument.starts_with("--") && argument.ends_with('=');
        argument.erase(argument.size() - (hasNoValue ? 1 : 0));
        arguments.push_back(std::move(argument));
        if (hasNoValue) {
            arguments.emplace_back();
        }
    }
    return {arguments.rbegin(), arguments.rend()};
}

[[noreturn]] void refuse(const std::string& reason) {
    throw Failure(ExitStatus::wrongUsage, printable(reason) + "\nRun docproducts --help for more information.\n");
}

}  // namespace

Options readOptions(int argc, const char* const* argv) {
    Options options;
    CLI::App app("Shows where VORLAN's documentation lives and which documentation products are installed.",
                 "docproducts");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("-V,--version", "docproducts " DOCPRODUCTS_VERSION, "Print the version and exit");
    app.footer(s_footer);
    app.require_subcommand(0, 1);
    addSharedOptions(app, options);
    addCommands(app, options);
    try {
        app.parse(reversedArguments(argc, argv));
    } catch (const CLI::Success& request) {
        options.command = Command::printText;
        options.text = requestedText(app, request);
    } catch (const CLI::ExtrasError&) {
        refuse(unexpected(app));
    } catch (const CLI::ParseError& e) {
        refuse(e.what());
    }
    if (options.command == Command::printText && options.text.empty()) {
        refuse("One of the commands roots, list, find, explain and check is required");
    }
    if (options.catalogue && !options.check.files.empty()) {
        refuse("--catalogue and FILE can't be used together");
    }
    options.json = options.json || options.check.format == "json";
    return options;
}

}  // namespace app
