// Makes one program of the examples of a page:
//
//     extract-examples PAGE.md PROGRAM.cpp NAME      NAME is what the compiler calls the page
//
// The blocks become the body of main, one after the other, so that each goes on with what those before it have
// declared; their #include lines move to the top. After each block the program prints kEndOfPart.

#include <tests/docs/Page.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <set>
#include <string>

namespace {

using Quenzo::Docs::Example;

bool IsInclude(const std::string& line) { return line.starts_with("#include "); }

void WriteIncludes(std::ostream& out, const std::vector<Example>& examples) {
    std::set<std::string> includes = {"#include <iostream>"};
    for (const Example& example : examples) {
        for (const std::string& line : example.code.lines) {
            if (IsInclude(line)) {
                includes.insert(line);
            }
        }
    }
    for (const std::string& include : includes) {
        out << include << '\n';
    }
}

// An error of the compiler names the line of the page.
void WriteBody(std::ostream& out, const Example& example, const std::string& name) {
    out << "#line " << example.code.line << " \"" << name << "\"\n";
    for (const std::string& line : example.code.lines) {
        out << (IsInclude(line) ? std::string() : line) << '\n';
    }
    out << "std::cout << '\\x" << std::hex << int{Quenzo::Docs::kEndOfPart} << std::dec << "' << std::flush;\n";
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 4) {
        std::cerr << "usage: extract-examples PAGE.md PROGRAM.cpp NAME\n";
        return 2;
    }
    const std::vector<Example> examples = Quenzo::Docs::ReadExamples(argv[1]);
    std::ofstream out(argv[2]);
    WriteIncludes(out, examples);
    out << "int main() {\n";
    for (const Example& example : examples) {
        WriteBody(out, example, argv[3]);
    }
    out << "}\n";
    out.close();
    return out ? 0 : 3;
} catch (const std::exception& failure) {
    std::cerr << "extract-examples: " << failure.what() << '\n';
    return 3;
}
