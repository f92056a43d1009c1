#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace orlune {

struct ComponentState;

/// The user-visible text numbered `id`, in the language of the hosting page. Valid for the whole request.
std::string_view LoadText(const ComponentState& state, int id);
/// The same with "%s" replaced by the first argument, then "%t" by the second, and so on; an argument that
/// holds a later placeholder has that replaced as well.
std::string LoadText(const ComponentState& state, int id, std::initializer_list<std::string_view> arguments);

/// Appends the text `id` to the errors that the page will show.
void AddAlert(ComponentState& state, int id, std::initializer_list<std::string_view> arguments = {});

}  // namespace orlune
