// What the connection to the host shows: names in the host's bars, questions and failures.
#pragma once

#include <string_view>

namespace declarium {

inline constexpr std::u16string_view kStandardBar = u"Standard";
inline constexpr std::u16string_view kAddInsBar = u"Add-Ins";

inline constexpr std::u16string_view kButtonCaption = u"Brindlework Declarium 3.0";
inline constexpr std::u16string_view kMenuCaption = u"Declar&ium";

// Each is followed by the number of the failing step and kFailureEnd.
inline constexpr std::u16string_view kConnectionFailure =
    u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '";
inline constexpr std::u16string_view kDisconnectionFailure =
    u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnDisconnection' na riadku '";
inline constexpr std::u16string_view kFailureEnd = u"'.";

// The component's name stands between the two.
inline constexpr std::u16string_view kInsertQuestion = u"Vložiť do '";
inline constexpr std::u16string_view kInsertQuestionEnd = u"' ?";

}  // namespace declarium
