#include <Conf/Interfaces/IFormatCodecVideo.h>

#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <array>
#include <cstdint>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf {

namespace {

const char* const TAG_PIX_FMT = "PIXELFORMAT";
const char* const TAG_DISPLAYMATRIX = "DISPLAYMATRIX";
const char* const TAG_SPHERICAL_INFO = "SPHERICAL_INFO";
const char* const TAG_SPHERICAL_YAW = "SPHERICAL_YAW";
const char* const TAG_SPHERICAL_PITCH = "SPHERICAL_PITCH";
const char* const TAG_SPHERICAL_ROLL = "SPHERICAL_ROLL";

using Core::Property;

constexpr char kMatrixSeparator = ':';

std::uint32_t Low32(const Property& integer) { return static_cast<std::uint32_t>(integer.GetInt64()); }

std::int32_t SignedLow32(const Property& integer) { return static_cast<std::int32_t>(integer.GetInt64()); }

struct Aspect {
    std::uint32_t x;
    std::uint32_t y;
};

Aspect Reduced(std::uint32_t x, std::uint32_t y) {
    const std::uint32_t divisor = std::gcd(x, y);
    return divisor >= 2 ? Aspect{x / divisor, y / divisor} : Aspect{x, y};
}

// The products of stored numbers wrap around at 64 bits, and their low 32 bits count.
Aspect StoredFrameAspect(const Property& tree) {
    const auto product = [&tree](const std::string& size, const std::string& aspect) {
        return Low32(tree[size]) * Low32(tree[aspect]);
    };
    const std::uint32_t x = product(VideoVocabulary::TAG_WIDTH, VideoVocabulary::TAG_ASPECTX);
    return Reduced(x, product(VideoVocabulary::TAG_HEIGHT, VideoVocabulary::TAG_ASPECTY));
}

template <typename Enumeration>
Enumeration CodePoint(const Property& tree, const std::string& key) {
    const auto child = tree.FindChild(key);
    return child != tree.end() ? Enumeration{SignedLow32(*child)} : Enumeration::UNSPECIFIED;
}

}  // namespace

SP<IFormatCodecVideo> IFormatCodecVideo::Create() { return SP<IFormatCodecVideo>(new IFormatCodecVideo()); }

IFormatCodecVideo::IFormatCodecVideo() : IFormatCodec(TAG_FORMAT_CODEC_VIDEO) {
    Tree().SetChildT<bool>(TAG_COVER_FLAG, false);
}

IFormatCodecVideo::~IFormatCodecVideo() = default;

SP<IFormatCodecVideo> IFormatCodecVideo::Clone() const { return SP<IFormatCodecVideo>(new IFormatCodecVideo(*this)); }

SP<IFormatCodec> IFormatCodecVideo::CloneBase() const { return Clone(); }

MediaType IFormatCodecVideo::GetCodecType() const { return MediaType::Video; }

FrameInfo IFormatCodecVideo::GetFrameInfo() const {
    const Property& tree = Tree();
    FrameInfo info;
    info.width = Low32(tree[TAG_WIDTH]);
    info.height = Low32(tree[TAG_HEIGHT]);
    info.aspectX = Low32(tree[TAG_ASPECTX]);
    info.aspectY = Low32(tree[TAG_ASPECTY]);
    return info;
}

void IFormatCodecVideo::InitByPixelAspect(unsigned width, unsigned height, unsigned pixelAspectX,
                                          unsigned pixelAspectY) {
    Tree().SetChildT<long long>(TAG_WIDTH, width);
    Tree().SetChildT<long long>(TAG_HEIGHT, height);
    Tree().SetChildT<long long>(TAG_ASPECTX, pixelAspectX);
    Tree().SetChildT<long long>(TAG_ASPECTY, pixelAspectY);
}

void IFormatCodecVideo::InitByFrameAspect(unsigned width, unsigned height, unsigned frameAspectX,
                                          unsigned frameAspectY) {
    unsigned pixelAspectX = 0;
    unsigned pixelAspectY = 0;
    FrameToPixelAspect(width, height, frameAspectX, frameAspectY, pixelAspectX, pixelAspectY);
    InitByPixelAspect(width, height, pixelAspectX, pixelAspectY);
}

void IFormatCodecVideo::FrameToPixelAspect(unsigned width, unsigned height, unsigned frameAspectX,
                                           unsigned frameAspectY, unsigned& pixelAspectX, unsigned& pixelAspectY) {
    const Aspect aspect = Reduced(frameAspectX * height, frameAspectY * width);
    pixelAspectX = aspect.x;
    pixelAspectY = aspect.y;
}

void IFormatCodecVideo::PixelToFrameAspect(unsigned width, unsigned height, unsigned pixelAspectX,
                                           unsigned pixelAspectY, unsigned& frameAspectX, unsigned& frameAspectY) {
    const Aspect aspect = Reduced(pixelAspectX * width, pixelAspectY * height);
    frameAspectX = aspect.x;
    frameAspectY = aspect.y;
}

unsigned IFormatCodecVideo::GetFrameAspectX() const { return StoredFrameAspect(Tree()).x; }

unsigned IFormatCodecVideo::GetFrameAspectY() const { return StoredFrameAspect(Tree()).y; }

double IFormatCodecVideo::GetFrameAspect() const {
    const Aspect aspect = StoredFrameAspect(Tree());
    return static_cast<double>(aspect.x) / static_cast<double>(aspect.y);
}

void IFormatCodecVideo::SetFrameRate(const boost::rational<long long>& fps) {
    Tree().SetChildT<boost::rational<long long>>(TAG_FPS, fps);
    const boost::rational<long long> timeBase =
        fps.numerator() >= 1 ? boost::rational<long long>(fps.denominator(), fps.numerator()) : 0;
    Tree().SetChildT<boost::rational<long long>>(TAG_STREAM_TIMEBASE, timeBase);
}

void IFormatCodecVideo::SetFrameRate(unsigned num, unsigned den) {
    if (den == 0) {
        QUENZO_THROW(boost::bad_rational());
    }
    SetFrameRate(boost::rational<long long>(num, den));
}

ColorPrimaries IFormatCodecVideo::GetColorPrimaries() const {
    return CodePoint<ColorPrimaries>(Tree(), TAG_COLOR_PRIMARIES);
}

TransferFunction IFormatCodecVideo::GetColorTransferFunction() const {
    return CodePoint<TransferFunction>(Tree(), TAG_COLOR_TRANSFER_FUNCTION);
}

YCbCrMatrix IFormatCodecVideo::GetColorYCbCrMatrix() const { return CodePoint<YCbCrMatrix>(Tree(), TAG_COLOR_MATRIX); }

ColorSpace IFormatCodecVideo::GetColorSpace() const {
    return {GetColorPrimaries(), GetColorTransferFunction(), GetColorYCbCrMatrix()};
}

void IFormatCodecVideo::SetColorSpace(const ColorSpace& colorSpace) {
    if (!IsValidColorPrimaries(colorSpace.primaries) || !IsValidTransferFunction(colorSpace.transfer) ||
        !IsValidYCbCrMatrix(colorSpace.matrix)) {
        Tree().RemoveChild(TAG_COLOR_PRIMARIES);
        Tree().RemoveChild(TAG_COLOR_TRANSFER_FUNCTION);
        Tree().RemoveChild(TAG_COLOR_MATRIX);
        return;
    }
    Tree().SetChildT<long long>(TAG_COLOR_PRIMARIES, static_cast<long long>(colorSpace.primaries));
    Tree().SetChildT<long long>(TAG_COLOR_TRANSFER_FUNCTION, static_cast<long long>(colorSpace.transfer));
    Tree().SetChildT<long long>(TAG_COLOR_MATRIX, static_cast<long long>(colorSpace.matrix));
}

PixFmt IFormatCodecVideo::GetPixelFormat() const {
    const auto format = Tree().FindChild(TAG_PIX_FMT);
    return format != Tree().end() ? PixFmt{SignedLow32(*format)} : PixFmt::NONE;
}

void IFormatCodecVideo::SetPixelFormat(PixFmt format) {
    if (format == PixFmt::NONE) {
        Tree().RemoveChild(TAG_PIX_FMT);
    } else {
        Tree().SetChildT<long long>(TAG_PIX_FMT, static_cast<long long>(format));
    }
}

bool IFormatCodecVideo::ExistsDisplayMatrix() const { return Tree().ChildExists(TAG_DISPLAYMATRIX); }

DisplayMatrix IFormatCodecVideo::GetDisplayMatrix() const {
    const auto stored = Tree().FindChild(TAG_DISPLAYMATRIX);
    if (stored == Tree().end()) {
        return {};
    }
    std::vector<std::string> entries;
    SplitString(entries, stored->GetString(), kMatrixSeparator);
    DisplayMatrix matrix;
    if (entries.size() != matrix.m.size()) {
        return {};
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!ToNumber<int>(entries[i], matrix.m[i])) {
            return {};
        }
    }
    return matrix;
}

void IFormatCodecVideo::SetDisplayMatrix(const DisplayMatrix& matrix) {
    if (matrix.IsDefault()) {
        Tree().RemoveChild(TAG_DISPLAYMATRIX);
    } else {
        std::string text;
        for (const std::int32_t entry : matrix.m) {
            text.append(text.empty() ? 0 : 1, ':').append(std::to_string(entry));
        }
        Tree().SetChildT<std::string>(TAG_DISPLAYMATRIX, text);
    }
}

bool IFormatCodecVideo::SphericalInfoExist() const { return Tree().ChildExists(TAG_SPHERICAL_INFO); }

SphericalInfo IFormatCodecVideo::GetSphericalInfo() const {
    const Property& node = Tree()[TAG_SPHERICAL_INFO];
    SphericalInfo info;
    info.yaw = SignedLow32(node[TAG_SPHERICAL_YAW]);
    info.pitch = SignedLow32(node[TAG_SPHERICAL_PITCH]);
    info.roll = SignedLow32(node[TAG_SPHERICAL_ROLL]);
    return info;
}

void IFormatCodecVideo::SetSphericalInfo(const SphericalInfo& info) {
    Property node{std::string(TAG_SPHERICAL_INFO)};
    node.SetChildT<long long>(TAG_SPHERICAL_YAW, info.yaw);
    node.SetChildT<long long>(TAG_SPHERICAL_PITCH, info.pitch);
    node.SetChildT<long long>(TAG_SPHERICAL_ROLL, info.roll);
    Tree().SetChild(TAG_SPHERICAL_INFO, node);
}

bool IFormatCodecVideo::IsTwoPassEncodingEnabled() const {
    const Property& tree = Tree();
    const auto mode = tree.FindChild(TAG_MULTIPASS_ENCODING);
    return mode != tree.end() && mode->GetString() == TAG_TWO_PASS_MODE &&
           tree[TAG_BITRATE_MODE].GetString() == TAG_BITRATE_MODE_CBR;
}

bool IFormatCodecVideo::IsGrid() const {
    return Tree().ChildExists(TAG_HEIF_GRID_WIDTH) && Tree().ChildExists(TAG_HEIF_GRID_HEIGHT);
}

bool IFormatCodecVideo::IsHardwareContextEnabled() const {
    const Property& options = Tree()[TAG_CODEC_OPTIONS_ENCODE];
    const auto useHardware = options.FindChild(TAG_USE_HW_CONTEXT);
    if (useHardware == options.end()) {
        return true;
    }
    switch (useHardware->GetType()) {
        case PropertyTypes::Bool: return useHardware->GetBool();
        case PropertyTypes::String: return useHardware->GetString() == "true";
        case PropertyTypes::None:
        case PropertyTypes::Int64:
        case PropertyTypes::Ratio:
        case PropertyTypes::Node: break;
    }
    return true;
}

}  // namespace Quenzo::Conf
