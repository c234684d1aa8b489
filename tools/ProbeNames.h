#pragma once

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/ColorCharacteristic.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>

#include <optional>
#include <string>
#include <vector>

namespace Quenzo::Tools {

/// What the names that ffprobe prints are in this system; nothing for a name that has no counterpart.
std::optional<std::string> CodecOfProbe(const std::string& name);
std::optional<std::string> ProfileOfProbe(const std::string& codecId, const std::string& name);
std::optional<PixFmt> PixelFormatOfProbe(const std::string& name);
std::optional<PixelColorRange> ColorRangeOfProbe(const std::string& name);
std::optional<Conf::ColorPrimaries> PrimariesOfProbe(const std::string& name);
std::optional<Conf::TransferFunction> TransferOfProbe(const std::string& name);
std::optional<Conf::YCbCrMatrix> MatrixOfProbe(const std::string& name);
std::optional<Conf::ChannelLayout> LayoutOfProbe(const std::string& name);
std::optional<Conf::SampleFormats> SampleFormatOfProbe(const std::string& name);

/// The container, from the names of the demuxer, which are joined by commas, and from the file's name: a demuxer may
/// read several containers, and then the extension decides.
std::optional<std::string> ContainerOfProbe(const std::string& demuxer, const std::string& fileName);

}  // namespace Quenzo::Tools
