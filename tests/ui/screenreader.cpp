// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a screen reader finds in a window of another process, through the accessibility bus.
//
//   screenreader PID list                      everything that is shown, one line each, indented
//   screenreader PID do ACTION ROLE NAME       an action of the first thing shown with this role and name
//   screenreader PID hear                      each notification as it comes, one line each, after the line "ready"

#include <atspi/atspi.h>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::chrono_literals;

struct Release
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Accessible = std::unique_ptr<AtspiAccessible, Release>;
using States = std::unique_ptr<AtspiStateSet, Release>;

std::string taken(gchar *text)
{
    const std::unique_ptr<gchar, decltype(&g_free)> owned(text, &g_free);
    std::string result = owned ? owned.get() : "";
    for (size_t at = 0; (at = result.find('\n', at)) != std::string::npos; at += 2)
        result.replace(at, 1, "\\n");
    return result;
}

std::string name(AtspiAccessible *object)
{
    return taken(atspi_accessible_get_name(object, nullptr));
}

std::string role(AtspiAccessible *object)
{
    return taken(atspi_accessible_get_role_name(object, nullptr));
}

/// Null where the process is not on the bus.
Accessible application(guint process)
{
    const Accessible desktop(atspi_get_desktop(0));
    for (int i = 0; i < atspi_accessible_get_child_count(desktop.get(), nullptr); ++i) {
        Accessible child(atspi_accessible_get_child_at_index(desktop.get(), i, nullptr));
        if (child && atspi_accessible_get_process_id(child.get(), nullptr) == process)
            return child;
    }
    return nullptr;
}

Accessible awaitApplication(guint process)
{
    const auto end = std::chrono::steady_clock::now() + 20s;
    Accessible found;
    while (!(found = application(process)) && std::chrono::steady_clock::now() < end)
        g_usleep(20'000);
    return found;
}

/// The states that tell a listener something. Qt takes every label for focusable.
std::string stateNames(AtspiAccessible *object)
{
    static const std::vector<std::pair<AtspiStateType, std::string>> told = {
        {ATSPI_STATE_FOCUSED, "focused"},       {ATSPI_STATE_SELECTED, "selected"},
        {ATSPI_STATE_CHECKED, "checked"},       {ATSPI_STATE_EDITABLE, "editable"},
        {ATSPI_STATE_MULTI_LINE, "multi-line"}, {ATSPI_STATE_FOCUSABLE, "focusable"},
    };
    const States states(atspi_accessible_get_state_set(object));
    const bool isLabel = atspi_accessible_get_role(object, nullptr) == ATSPI_ROLE_LABEL;
    std::string result = atspi_state_set_contains(states.get(), ATSPI_STATE_SENSITIVE) ? "" : " disabled";
    for (const auto &[state, label] : told) {
        if (atspi_state_set_contains(states.get(), state) && !(isLabel && state == ATSPI_STATE_FOCUSABLE))
            result += " " + label;
    }
    return result;
}

/// What stands in a text that can be edited.
std::string content(AtspiAccessible *object)
{
    const std::unique_ptr<AtspiText, Release> text(atspi_accessible_get_text_iface(object));
    if (!text || atspi_accessible_get_role(object, nullptr) != ATSPI_ROLE_TEXT)
        return "";
    return ": " + taken(atspi_text_get_text(text.get(), 0, -1, nullptr));
}

bool isShown(AtspiAccessible *object)
{
    const States states(atspi_accessible_get_state_set(object));
    return atspi_state_set_contains(states.get(), ATSPI_STATE_VISIBLE);
}

using Visit = std::function<bool(AtspiAccessible *object, int depth)>; // false ends the walk

/// Depth first, in the order of the children. A thing that only holds others counts for nothing.
bool walk(AtspiAccessible *parent, int depth, const Visit &visit)
{
    for (int i = 0; i < atspi_accessible_get_child_count(parent, nullptr); ++i) {
        const Accessible child(atspi_accessible_get_child_at_index(parent, i, nullptr));
        if (!child || !isShown(child.get()))
            continue;
        const AtspiRole kind = atspi_accessible_get_role(child.get(), nullptr);
        const bool onlyHolds = (kind == ATSPI_ROLE_FILLER || kind == ATSPI_ROLE_PANEL) && name(child.get()).empty();
        if (!onlyHolds && !visit(child.get(), depth))
            return false;
        if (!walk(child.get(), depth + (onlyHolds ? 0 : 1), visit))
            return false;
    }
    return true;
}

int list(AtspiAccessible *application)
{
    walk(application, 0, [](AtspiAccessible *object, int depth) {
        const std::string description = taken(atspi_accessible_get_description(object, nullptr));
        std::cout << std::string(size_t(depth) * 2, ' ') << role(object) << " \"" << name(object) << '"'
                  << stateNames(object) << content(object) << (description.empty() ? "" : " (" + description + ")")
                  << '\n';
        return true;
    });
    return EXIT_SUCCESS;
}

bool act(AtspiAccessible *object, const std::string &wanted)
{
    const std::unique_ptr<AtspiAction, Release> actions(atspi_accessible_get_action_iface(object));
    for (int i = 0; actions && i < atspi_action_get_n_actions(actions.get(), nullptr); ++i) {
        if (taken(atspi_action_get_action_name(actions.get(), i, nullptr)) == wanted)
            return atspi_action_do_action(actions.get(), i, nullptr);
    }
    return false;
}

int perform(AtspiAccessible *application, const std::string &action, const std::string &wantedRole,
            const std::string &wantedName)
{
    bool isDone = false;
    walk(application, 0, [&](AtspiAccessible *object, int) {
        if (role(object) != wantedRole || name(object) != wantedName)
            return true;
        isDone = act(object, action);
        return false;
    });
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Screen readers speak a notification when it is shown.
void tellNotification(AtspiEvent *event, void *)
{
    if (event->detail1 == 1 && atspi_accessible_get_role(event->source, nullptr) == ATSPI_ROLE_NOTIFICATION)
        std::cout << name(event->source) << std::endl;
    g_boxed_free(ATSPI_TYPE_EVENT, event);
}

int hear()
{
    AtspiEventListener *listener = atspi_event_listener_new(tellNotification, nullptr, nullptr);
    if (!atspi_event_listener_register(listener, "object:state-changed:showing", nullptr))
        return EXIT_FAILURE;
    std::cout << "ready" << std::endl;
    atspi_event_main(); // until the process is ended
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 2 || atspi_init() != 0)
        return EXIT_FAILURE;
    const Accessible found = awaitApplication(guint(std::stoul(arguments[0])));
    if (!found)
        return EXIT_FAILURE;
    if (arguments[1] == "list")
        return list(found.get());
    if (arguments[1] == "do" && arguments.size() == 5)
        return perform(found.get(), arguments[2], arguments[3], arguments[4]);
    return arguments[1] == "hear" ? hear() : EXIT_FAILURE;
}
