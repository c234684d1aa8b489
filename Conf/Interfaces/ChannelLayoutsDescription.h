#pragma once

#include <foundation/Export.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Conf {

/// The arrangements of audio channels, named after their text ids; an underscore stands before a digit. UNKNOWN, 0,
/// means that no layout is set.
enum class ChannelLayout : std::int32_t {
#define QUENZO_LAYOUT(value, name, textId, channels) name = (value),
#include <Conf/Interfaces/ChannelLayouts.def>
};

/// What is known of one channel layout: a row of a fixed table. Rows keep their addresses for the life of the process.
struct QUENZO_API LayoutRecord {
    ChannelLayout layout;       ///< the enumerator, which is the place of the row too
    std::int32_t channels;      ///< number of channels, 0 to 16
    const std::string& textId;  ///< the word that trees hold, one of IFormatCodecAudio::TAG_CH_LAYOUT_*; compare texts,
                                ///< not addresses: a program may hold a copy of a constant

    /// All rows, in the order of their values.
    static const std::array<LayoutRecord, 29>& Enumerate() noexcept;

    /// Copies of all rows but that of UNKNOWN, in the same order.
    static const std::array<LayoutRecord, 28>& EnumerateValid() noexcept;

    /// The row of a layout. Raises FormatException when the value is not one of the enumerators.
    static const LayoutRecord& Find(ChannelLayout layout);

    /// The row with a text id, which must match byte for byte. Raises FormatException when there is none.
    static const LayoutRecord& Find(const std::string& textId);

    /// The first row with a number of channels: 0 gives UNKNOWN, 1 MONO, 2 STEREO, 3 to 8 the layout with that many
    /// less one and a low-frequency channel, such as _5POINT1, and 16 HEXADECAGONAL. Raises FormatException for any
    /// other number.
    static const LayoutRecord& Find(int channels);
};

/// How much is lost when audio of one layout is stored in another: the number of channels added, or 100 more than the
/// number of channels dropped. Only numbers of channels count, so two layouts of equally many channels give 0.
/// Raises FormatException when either value is not one of the enumerators.
QUENZO_API std::uint32_t GetChannelLayoutLoss(ChannelLayout from, ChannelLayout to);

/// The first of the candidates with the smallest loss, or UNKNOWN when there are none. A single candidate is returned
/// whatever its value; otherwise FormatException is raised when any value is not one of the enumerators.
QUENZO_API ChannelLayout FindBestChannelLayout(ChannelLayout from, const std::vector<ChannelLayout>& candidates);

}  // namespace Quenzo::Conf
