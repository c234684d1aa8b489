// A display matrix as a description stores it: any text is read without harm, and any matrix has a box and an answer.

#include <fuzz/Require.h>

#include <Conf/Interfaces/IFormatCodecVideo.h>

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quenzo;
    using Conf::DisplayMatrix;
    const auto video = Conf::IFormatCodecVideo::Create();
    Core::Property tree = video->GetProperty();
    tree.SetChildT<std::string>("DISPLAYMATRIX", {data, data + size});
    video->SetProperty(tree);
    DisplayMatrix matrix = video->GetDisplayMatrix();
    video->SetDisplayMatrix(matrix);
    Fuzz::Require(matrix.IsDefault() || video->GetDisplayMatrix() == matrix, "a stored matrix is read again");

    const double rotation = matrix.GetRotation();
    Fuzz::Require(rotation >= 0 && rotation < 360, "an angle lies in one turn");
    const auto orientation = matrix.GetOrientation();
    Fuzz::Require(!orientation || (static_cast<int>(*orientation) >= 1 && static_cast<int>(*orientation) <= 8),
                  "an orientation is one of eight");
    for (const FrameSize frame : {FrameSize{1, 1}, FrameSize{1921, 1079}, FrameSize{4294967295U, 4294967295U}}) {
        matrix.CorrectTranslation(frame);
        matrix.GetTransform().GetBoundingBox(frame, true);
        matrix.GetTransform().GetBoundingBox(Conf::FrameInfo{frame.width, frame.height, 64, 45}, false);
    }
    return 0;
}
