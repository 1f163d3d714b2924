#pragma once

// The names of the settings that hold the two roots, and of the group that they stand in.
namespace docroot_cache::setting_names {

constexpr const char* helpGroup = "vorlan.help";
constexpr const char* docRoot = "DocRoot";
constexpr const char* docDataRoot = "DocDataRoot";

}  // namespace docroot_cache::setting_names
