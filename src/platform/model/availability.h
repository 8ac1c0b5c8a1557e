// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

namespace lumora {

/// Whether replies can be had from the language model, and if not, why.
class Availability
{
public:
    enum class UnavailableReason {
        deviceNotEligible,           ///< this CPU, this memory or this installation cannot run the model
        appleIntelligenceNotEnabled, ///< there is no model file at all
        modelNotReady,               ///< the model is loading, or its file is still growing
        other,                       ///< the file does not load, or the model service keeps crashing
    };

    static Availability available() { return {}; }
    static Availability unavailable(UnavailableReason reason) { return Availability(reason); }

    bool isAvailable() const { return !m_reason.has_value(); }

    /// Absent while the model is available.
    std::optional<UnavailableReason> reason() const { return m_reason; }

    bool operator==(const Availability &) const = default;

private:
    Availability() = default;
    explicit Availability(UnavailableReason reason)
        : m_reason(reason)
    {
    }

    std::optional<UnavailableReason> m_reason;
};

} // namespace lumora
