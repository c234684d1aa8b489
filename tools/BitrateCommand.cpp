#include <tools/BitrateCommand.h>

#include <tools/Arguments.h>
#include <tools/Failure.h>
#include <tools/Vocabulary.h>

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/Stub.h>
#include <foundation/Throw.h>

#include <fmt/format.h>

#include <cmath>
#include <cstdint>

namespace Quenzo::Tools {

namespace {

// What goes into a proposal.
struct Inputs {
    std::string codecId;
    FrameSize size;
    boost::rational<long long> rate;
    double framesPerSecond;
    int quality;  // 0 for none
};

Inputs Parse(const BitrateQuestion& question) {
    Inputs inputs;
    inputs.codecId = FindExact(CodecIdentifiers(), question.codec);
    if (!Conf::IsVideoCodec(inputs.codecId) && Conf::GetVideoBitrateModel(inputs.codecId).codecId != inputs.codecId) {
        QUENZO_THROW(Failure(ExitStatus::No, fmt::format("{} is no video codec; bit rates are proposed for video only",
                                                         inputs.codecId)));
    }
    inputs.size = ParseSize(question.size);
    inputs.rate = ParseFrameRate(question.framesPerSecond);
    inputs.framesPerSecond =
        static_cast<double>(inputs.rate.numerator()) / static_cast<double>(inputs.rate.denominator());
    inputs.quality = question.quality.empty() ? 0 : ParseQuality(question.quality);
    return inputs;
}

class Steps {
public:
    void Add(const std::string& what, const std::string& how, double value) {
        table_.rows.push_back({what, how, fmt::format("{:.10g}", value)});
    }
    void Add(const std::string& what, const std::string& how, std::int64_t value) {
        table_.rows.push_back({what, how, fmt::format("{}", value)});
    }
    Report::Table Take() { return std::move(table_); }

private:
    Report::Table table_{"steps", {"step", "how", "value"}, {}};
};

std::string DescribeModel(const Inputs& inputs, const Conf::VideoBitrateModel& model) {
    if (model.codecId != inputs.codecId) {
        return fmt::format("{} has no numbers of its own: those of {} serve", inputs.codecId, model.codecId);
    }
    return model.share == 1 ? fmt::format("the numbers of {}", model.codecId)
                            : "the numbers of an older codec; the share follows below";
}

std::string DescribeFactor(double framesPerSecond) {
    if (framesPerSecond > 30) {
        return "above 30: (fps - 30) x 0.1 / 20 + 1";
    }
    return framesPerSecond < 25 ? "below 25: fps x 0.7 / 25 + 0.3" : "from 25 to 30: 1";
}

Report::Table Explain(const Inputs& inputs, std::int64_t usual) {
    const Conf::VideoBitrateModel& model = Conf::GetVideoBitrateModel(inputs.codecId);
    const double width = inputs.size.width;
    const double height = inputs.size.height;
    const double side = std::sqrt(width * height);
    const double kilobits = model.multiplier * std::pow(side, model.exponent);
    const double factor = Conf::GetFrameRateFactor(inputs.framesPerSecond);
    const std::int64_t corrected = Conf::CorrectBitrateByFPS(kilobits, inputs.framesPerSecond);
    Steps steps;
    steps.Add("exponent", DescribeModel(inputs, model), model.exponent);
    steps.Add("multiplier", "of the same codec", model.multiplier);
    steps.Add("side", fmt::format("square root of {} x {}", inputs.size.width, inputs.size.height), side);
    steps.Add("kilobits per second", "multiplier x side ^ exponent", kilobits);
    steps.Add("frame rate factor", DescribeFactor(inputs.framesPerSecond), factor);
    steps.Add("bits per second", "kilobits x factor x 1024, without the fraction", corrected);
    if (model.share != 1) {
        steps.Add("share of the codec", fmt::format("x {}, without the fraction", model.share), usual);
    }
    steps.Add("lowest", "half of it", usual / 2);
    steps.Add("highest", "twice", usual * 2);
    if (inputs.quality != 0) {
        const double share = 1.0 - (inputs.quality - 1) * (2.0 / 3.0) / 31;
        steps.Add("share of the quality", fmt::format("1 - ({} - 1) x 2/3 / 31; all three x this", inputs.quality),
                  share);
    }
    return steps.Take();
}

}  // namespace

Report ProposeBitrate(const BitrateQuestion& question) {
    const Inputs inputs = Parse(question);
    const auto ask = [&inputs](auto function) -> std::int64_t {
        return function(inputs.codecId, inputs.size.width, inputs.size.height, inputs.framesPerSecond, inputs.quality);
    };
    using Ask = std::int64_t (*)(const std::string&, long long, long long, double, int);
    Report report;
    report.Add("codec", inputs.codecId);
    report.Add("size", fmt::format("{}x{}", inputs.size.width, inputs.size.height));
    report.Add("frames per second", inputs.rate.denominator() == 1
                                        ? fmt::format("{}", inputs.rate.numerator())
                                        : fmt::format("{}/{}", inputs.rate.numerator(), inputs.rate.denominator()));
    if (inputs.quality != 0) {
        report.Add("quality", std::int64_t{inputs.quality});
    }
    report.Add("bits per second", ask(static_cast<Ask>(Conf::GetDefaultVideoBitrate)));
    report.Add("lowest", ask(static_cast<Ask>(Conf::GetMinVideoBitrate)));
    report.Add("highest", ask(static_cast<Ask>(Conf::GetMaxVideoBitrate)));
    if (question.isExplained) {
        report.Add(Explain(inputs, Conf::GetDefVideoBitrate(inputs.codecId, inputs.size.width, inputs.size.height,
                                                            inputs.framesPerSecond)));
    }
    return report;
}

}  // namespace Quenzo::Tools
