#pragma once

#include <bench/Questions.h>
#include <bench/Verify.h>

#include <benchmark/benchmark.h>

#include <gst/video/video.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Quenzo::Bench {

/// As many of GStreamer's raw video formats as the library has: the first, which its search by name finds soonest.
inline std::vector<GstVideoFormat> VideoFormats() {
    constexpr std::size_t kCount = 58;
    std::vector<GstVideoFormat> formats;
    for (int id = GST_VIDEO_FORMAT_ENCODED + 1; formats.size() < kCount; ++id) {
        formats.push_back(static_cast<GstVideoFormat>(id));
    }
    return formats;
}

inline std::vector<std::string> VideoFormatNames() {
    std::vector<std::string> names;
    for (const GstVideoFormat format : VideoFormats()) {
        names.emplace_back(gst_video_format_to_string(format));
    }
    Verify(std::find(names.begin(), names.end(), "UNKNOWN") == names.end(), "names of video formats");
    return names;
}

inline void VideoFormatById(benchmark::State& state) {
    const auto answer = [](GstVideoFormat format) { return gst_video_format_get_info(format); };
    for (const GstVideoFormat format : VideoFormats()) {
        Verify(GST_VIDEO_FORMAT_INFO_FORMAT(answer(format)) == format, "a video format's description");
    }
    AskInTurn(state, VideoFormats(), answer);
}

inline void VideoFormatByName(benchmark::State& state) {
    const auto answer = [](const std::string& name) {
        return gst_video_format_get_info(gst_video_format_from_string(name.c_str()));
    };
    for (const std::string& name : VideoFormatNames()) {
        Verify(GST_VIDEO_FORMAT_INFO_NAME(answer(name)) == name, "a video format's description");
    }
    AskInTurn(state, VideoFormatNames(), answer);
}

/// Strides, offsets and the total size.
inline void VideoFramePlanes(benchmark::State& state) {
    guint width = 1920;
    guint height = 1080;
    const auto answer = [&width, &height](GstVideoFormat format) {
        GstVideoInfo info;
        Verify(gst_video_info_set_format(&info, format, width, height) != FALSE, "the planes of a video format");
        return info;
    };
    const GstVideoInfo planar = answer(GST_VIDEO_FORMAT_I420);
    Verify(planar.size == 3110400 && planar.offset[1] == 2073600 && planar.offset[2] == 2592000,
           "the planes of a frame");
    benchmark::DoNotOptimize(width);
    benchmark::DoNotOptimize(height);
    AskInTurn(state, VideoFormats(), answer);
}

}  // namespace Quenzo::Bench
