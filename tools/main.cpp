// The command line: what it may say, and how the program ends. The commands themselves are in the other files.

#include <tools/BitrateCommand.h>
#include <tools/CatalogueCommands.h>
#include <tools/DescribeCommand.h>
#include <tools/Failure.h>
#include <tools/Files.h>
#include <tools/FrameCommands.h>
#include <tools/Help.h>
#include <tools/JobCommands.h>
#include <tools/LookupCommands.h>
#include <tools/ProbeJob.h>

#include <foundation/StringUtils.h>

#include <CLI/CLI.hpp>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <glog/logging.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Quenzo::Tools::ExitStatus;
using Quenzo::Tools::Failure;
using Quenzo::Tools::Quoted;

using Command = std::function<ExitStatus()>;

struct Arguments {
    Quenzo::Tools::NewJob newJob;
    std::string probe;
    std::string file;
    std::string other;
    std::string picture;
    std::string from;
    std::string to;
    std::string identifier;
    std::string size;
    Quenzo::Tools::BitrateQuestion bitrate;
    bool asJson = false;
};

void AddStream(Quenzo::Tools::NewJob& job, const std::string& text) {
    std::uint32_t index = 0;
    if (job.sources.empty()) {
        throw CLI::ValidationError("--stream " + text, "stands before the --in that it belongs to");
    }
    if (!Quenzo::ToNumber(text, index)) {
        throw CLI::ValidationError("--stream " + text, "a stream is numbered from 0 to 4294967295");
    }
    job.sources.back().streams.push_back(index);
}

// As a check of an option's value.
std::string RefuseEmptyPath(const std::string& path) { return path.empty() ? "needs the path of a file" : ""; }

void RequireSources(const Quenzo::Tools::NewJob& job, const std::string& probe) {
    if (job.sources.empty() == probe.empty()) {
        throw CLI::ValidationError("job new", "takes either --in with --stream, or --probe");
    }
    for (const auto& source : job.sources) {
        if (source.streams.empty()) {
            throw CLI::ValidationError("--in " + Quoted(source.path), "needs a --stream after it");
        }
    }
}

void AddJsonFlag(CLI::App& command, Arguments& arguments) {
    command.add_flag("--json", arguments.asJson, "Print the result as JSON");
}

CLI::App* AddJobReader(CLI::App& parent, Arguments& arguments, const std::string& name, const std::string& text) {
    CLI::App* command = parent.add_subcommand(name, text);
    command->add_option("FILE", arguments.file, "Job document, or - for standard input")->required();
    AddJsonFlag(*command, arguments);
    return command;
}

void AddJobNew(CLI::App& job, Arguments& arguments, Command& run) {
    auto& newJob = arguments.newJob;
    CLI::App* command = job.add_subcommand("new", "Print the document of a new job");
    command
        ->add_option_function<std::string>(
            "--in",
            [&newJob](const std::string& path) {
                newJob.sources.push_back({path, {}});
            },
            "Source file; may be repeated")
        ->check(RefuseEmptyPath)
        ->trigger_on_parse();
    command
        ->add_option_function<std::string>(
            "--stream", [&newJob](const std::string& text) { AddStream(newJob, text); },
            "Stream of the source before it, counted from 0; may be repeated. The nth stream of the\n"
            "job is encoded as the preset's nth stream; one beyond the preset's leads nowhere")
        ->trigger_on_parse();
    command->add_option("--probe", arguments.probe,
                        "What ffprobe prints of the source, as for the command describe; makes a job of all its\n"
                        "streams, with their descriptions");
    command->add_option("--preset", newJob.presetFile, "Preset, a JSON file")->required();
    command->add_option("--out", newJob.outputPath, "File that the job is to write")
        ->check(RefuseEmptyPath)
        ->required();
    command->add_flag("--dvd", newJob.losslessToDvd, "Write a DVD container, whatever the preset says");
    AddJsonFlag(*command, arguments);
    command->callback([&] {
        RequireSources(newJob, arguments.probe);
        run = [&newJob, &arguments] {
            return arguments.probe.empty() ? Quenzo::Tools::MakeJob(newJob)
                                           : Quenzo::Tools::MakeJobFromProbe({arguments.probe, newJob.presetFile,
                                                                              newJob.outputPath, newJob.losslessToDvd});
        };
    });
}

void AddJobCommands(CLI::App& program, Arguments& arguments, Command& run) {
    CLI::App* job = program.add_subcommand("job", "Make, check and look at job documents");
    job->require_subcommand(1);
    AddJobNew(*job, arguments, run);

    AddJobReader(
        *job, arguments, "check",
        "Say whether a job is valid, or which rules it breaks and where;\nchecks nodes and links, not their trees")
        ->callback([&] { run = [&] { return Quenzo::Tools::CheckJob(arguments.file, arguments.asJson); }; });
    AddJobReader(*job, arguments, "show", "Print the nodes and links of a job")->callback([&] {
        run = [&] { return Quenzo::Tools::ShowJob(arguments.file, arguments.asJson); };
    });

    CLI::App* draw = AddJobReader(*job, arguments, "draw", "Draw a job, or print it as Graphviz DOT text");
    draw->add_option("-o,--output", arguments.picture, "Picture to write: .svg, .png, .dot or .gv, in any case");
    draw->callback(
        [&] { run = [&] { return Quenzo::Tools::DrawJob(arguments.file, arguments.picture, arguments.asJson); }; });

    CLI::App* diff = job->add_subcommand("diff", "Print what two jobs do not have in common");
    diff->add_option("BEFORE", arguments.file, "Job document, or - for standard input")->required();
    diff->add_option("AFTER", arguments.other, "Job document, or - for standard input")->required();
    AddJsonFlag(*diff, arguments);
    diff->callback(
        [&] { run = [&] { return Quenzo::Tools::DiffJobs(arguments.file, arguments.other, arguments.asJson); }; });

    CLI::App* path = AddJobReader(*job, arguments, "path", "Print a way from one node to another along the links");
    path->add_option("FROM", arguments.from, "Id of the node to start from")->required();
    path->add_option("TO", arguments.to, "Id of the node to reach")->required();
    path->callback([&] {
        run = [&] {
            return Quenzo::Tools::FindJobPath(arguments.file, arguments.from, arguments.to, arguments.asJson);
        };
    });
}

void AddDescribe(CLI::App& program, Arguments& arguments, Command& run) {
    CLI::App* command = program.add_subcommand("describe", "Describe a clip from what ffprobe prints of it");
    command
        ->add_option("FILE", arguments.file,
                     "Output of ffprobe -v error -of json -show_format -show_streams -show_chapters CLIP,\n"
                     "or - for standard input")
        ->required();
    AddJsonFlag(*command, arguments);
    command->callback([&] { run = [&] { return Quenzo::Tools::DescribeProbe(arguments.file, arguments.asJson); }; });
}

// A command that prints a report. The report is made when the command runs, from the arguments as they are then.
CLI::App* AddReporter(CLI::App& program, Arguments& arguments, Command& run, const std::string& name,
                      const std::string& text, std::function<Quenzo::Tools::Report()> make) {
    CLI::App* command = program.add_subcommand(name, text);
    AddJsonFlag(*command, arguments);
    command->callback([&arguments, &run, make] {
        run = [&arguments, make] {
            make().Print(arguments.asJson);
            return ExitStatus::Done;
        };
    });
    return command;
}

void AddCatalogues(CLI::App& program, Arguments& arguments, Command& run) {
    namespace Tools = Quenzo::Tools;
    AddReporter(program, arguments, run, "codecs", "List all codecs", Tools::ListCodecs);
    AddReporter(program, arguments, run, "formats", "List all containers", Tools::ListFormats);
    AddReporter(program, arguments, run, "groups", "List the groups of files that a dialog offers", Tools::ListGroups);
    AddReporter(program, arguments, run, "layouts", "List the channel layouts", Tools::ListLayouts);
    AddReporter(program, arguments, run, "sample-formats", "List the audio sample formats", Tools::ListSampleFormats);
    AddReporter(program, arguments, run, "pixel-formats", "List the pixel formats", Tools::ListPixelFormats);
    AddReporter(program, arguments, run, "colours", "List the code points of colour (ITU-T H.273)", Tools::ListColours);
}

void AddLookups(CLI::App& program, Arguments& arguments, Command& run) {
    using LookUp = Quenzo::Tools::Report (*)(const std::string&);
    const auto add = [&](const char* name, const char* text, const char* argument, const char* meaning, LookUp lookUp) {
        AddReporter(program, arguments, run, name, text, [&arguments, lookUp] { return lookUp(arguments.identifier); })
            ->add_option(argument, arguments.identifier, meaning)
            ->required();
    };
    const char* const loosely = "Identifier, in any case and with or without its prefix";
    add("codec", "Say what is known of a codec", "ID", loosely, Quenzo::Tools::LookUpCodec);
    add("format", "Say what is known of a container", "ID", loosely, Quenzo::Tools::LookUpFormat);
    add("extension", "Say what is known of a file name's extension", "EXT", "Extension, with or without its dot",
        Quenzo::Tools::LookUpExtension);
    add("uti", "Say how pictures of a Uniform Type Identifier are opened", "UTI", "Identifier, such as public.jpeg",
        Quenzo::Tools::LookUpUti);
}

void AddSize(CLI::App& command, std::string& size) {
    command.add_option("--size", size, "Size of the frame, such as 1920x1080")->required();
}

void AddCalculations(CLI::App& program, Arguments& arguments, Command& run) {
    auto& question = arguments.bitrate;
    CLI::App* bitrate = AddReporter(program, arguments, run, "bitrate", "Propose a bit rate for video",
                                    [&question] { return Quenzo::Tools::ProposeBitrate(question); });
    bitrate->add_option("--codec", question.codec, "Video codec, as for the command codec")->required();
    AddSize(*bitrate, question.size);
    bitrate->add_option("--fps", question.framesPerSecond, "Frame rate, such as 25, 30000/1001 or 29.97")->required();
    bitrate->add_option("--quality", question.quality, "Quality from 1, the best, to 32");
    bitrate->add_flag("--explain", question.isExplained, "Say how the result comes about, step by step");

    CLI::App* planes = AddReporter(program, arguments, run, "planes", "Measure the planes of a frame", [&arguments] {
        return Quenzo::Tools::MeasurePlanes(arguments.identifier, arguments.size);
    });
    planes->add_option("PIXFMT", arguments.identifier, "Pixel format, such as YUV420P")->required();
    AddSize(*planes, arguments.size);

    CLI::App* orient =
        AddReporter(program, arguments, run, "orient", "Say how a turned or mirrored frame is shown",
                    [&arguments] { return Quenzo::Tools::Orient(arguments.identifier, arguments.size); });
    orient
        ->add_option("TURN", arguments.identifier,
                     "1 to 8, a value of the Exif orientation tag, or a name such as Rotated90; or else an angle\n"
                     "in degrees: 90 or 90cw clockwise, 90ccw counter-clockwise, 5deg for angles up to 8.\n"
                     "A turn of up to one degree counts as none; angles are printed to a hundredth of a degree")
        ->required();
    AddSize(*orient, arguments.size);
}

int Complain(ExitStatus status, const std::string& text) {
    std::fprintf(stderr, "quenzo-conf: %s\n", text.c_str());
    return static_cast<int>(status);
}

// The parser only says that a command is missing, not which word it did not know.
std::string UnknownCommand(const CLI::App& program, int argc, char** argv) {
    const CLI::App* at = &program;
    for (int i = 1; i < argc && argv[i][0] != '-'; ++i) {
        std::vector<std::string> names;
        const CLI::App* found = nullptr;
        for (const CLI::App* command : at->get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(command->get_name());
            found = command->get_name() == argv[i] ? command : found;
        }
        if (names.empty()) {
            break;
        }
        if (found == nullptr) {
            return fmt::format("there is no command {}; there is {}", Quoted(argv[i]), fmt::join(names, ", "));
        }
        at = found;
    }
    return {};
}

// The help of the command that was typed.
std::string HelpOf(const CLI::App& program) {
    std::string words = "quenzo-conf";
    for (const CLI::App* at = &program; !at->get_subcommands().empty();) {
        at = at->get_subcommands().front();
        words += ' ' + at->get_name();
    }
    return words + " --help";
}

void AddFooters(CLI::App& command, const std::string& words) {
    command.footer(Quenzo::Tools::FooterOf(words));
    for (CLI::App* const part : command.get_subcommands([](const CLI::App*) { return true; })) {
        AddFooters(*part, words.empty() ? part->get_name() : words + ' ' + part->get_name());
    }
}

// The library's remarks are for its developers, unless somebody asks for them.
void SilenceRemarks() {
    if (std::getenv("GLOG_minloglevel") == nullptr) {
        FLAGS_minloglevel = google::GLOG_WARNING;
    }
}

int Run(int argc, char** argv) {
    CLI::App program("Describe, check and draw media conversion jobs.", "quenzo-conf");
    program.require_subcommand(1);
    program.set_version_flag("--version", "quenzo-conf " QUENZO_VERSION);

    Arguments arguments;
    Command run;
    AddJobCommands(program, arguments, run);
    AddDescribe(program, arguments, run);
    AddCatalogues(program, arguments, run);
    AddLookups(program, arguments, run);
    AddCalculations(program, arguments, run);
    AddFooters(program, "");
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            // The parser's own streams do not say whether the text arrived.
            std::ostringstream text;
            program.exit(error, text, text);
            Quenzo::Tools::Print(text.str());
            return static_cast<int>(ExitStatus::Done);
        }
        const std::string unknown = UnknownCommand(program, argc, argv);
        return Complain(ExitStatus::WrongUsage,
                        fmt::format("{} (see {})", unknown.empty() ? error.what() : unknown, HelpOf(program)));
    }
    return static_cast<int>(run());
}

}  // namespace

int main(int argc, char** argv) {
    Quenzo::Tools::OccupyClosedStreams();
    FLAGS_logtostderr = true;
    SilenceRemarks();
    google::InitGoogleLogging(argv[0]);
    try {
        return Run(argc, argv);
    } catch (const Failure& failure) {
        return Complain(failure.GetStatus(), failure.what());
    } catch (const std::exception& failure) {
        return Complain(ExitStatus::Unreadable, failure.what());
    }
}
