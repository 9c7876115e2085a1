// How long the program waits for what, in seconds.
#pragma once

namespace zelto::timeouts {

/// For a call of the API, unless the call or `--timeout` says otherwise.
inline constexpr double usual = 15;

/// For the API to come up after it was asked to, whatever `--timeout` says.
inline constexpr double start = 12;
/// Between two looks at whether it is up. One look may take as long as a usual call.
inline constexpr double startPause = 0.4;

/// Longer than a script's own limit, so that the application has time to report that it ran into it: for a
/// script that a person tries, and for an agent's.
inline constexpr double scriptMargin = 20;
inline constexpr double agentScriptMargin = 15;
/// For an agent's script that has no limit of its own.
inline constexpr double agentScript = 45;

/// How long the application is asked to hold a poll of a feed until something new comes. Of two feeds that
/// are polled in turn each hold is short, since an entry of the other one has to wait for it.
inline constexpr double poll = 25;
inline constexpr double alternatingPoll = 12.5;
/// Added to the time for which a poll is held, so that the hold itself never looks like a time-out.
inline constexpr double pollMargin = 20;

}  // namespace zelto::timeouts
