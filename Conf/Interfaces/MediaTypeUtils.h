#pragma once

#include <Conf/Interfaces/MediaType.h>
#include <foundation/Export.h>

#include <string>
#include <utility>
#include <vector>

/// What an open-file dialog and the naming of new files need to know: groups of files and their extensions, and which
/// extension goes with which container. Extensions are written without a dot. All functions may be called from any
/// thread.
namespace Quenzo::Conf {

/// The groups to offer in an open-file dialog (the IFormatFile::GROUP_ constants), in their order, each with its kind
/// of files. GROUP_CD counts as audio. Of the groups that have extensions, GROUP_FF_IMAGES, GROUP_RAW_IMAGES,
/// GROUP_HEIF_IMAGES and GROUP_OTHER are not offered.
QUENZO_API std::vector<std::pair<FileMediaType, std::string>> GetSupportedFormats();

/// The extensions of a group, in their order; some groups name an extension twice, and GROUP_ALL_FILES has the single
/// "*". The group is compared byte for byte. Raises std::invalid_argument for a group that does not exist.
QUENZO_API std::vector<std::string> GetSupportedFormatExtensions(const std::string& groupId);

/// A short sample of a group's extensions for the filter line of a dialog, such as "*.mp3;*.flac;*.wav;...". Empty for
/// a group that has none, and for an unknown one.
QUENZO_API std::string GetFormatExtentionTip(const std::string& groupId);

/// The extensions of a container and the containers of an extension, the preferred one first; both are compared without
/// regard to the case of ASCII letters. Empty when the container or extension is unknown. The reference stays valid
/// until the library is unloaded.
QUENZO_API const std::vector<std::string>& GetExtensionsByFormat(const std::string& format);
QUENZO_API const std::vector<std::string>& GetFormatsByExtension(const std::string& extension);

/// The extension for a new file of a container, which is compared like above. Raises std::invalid_argument, with the
/// container in its text, when it is unknown. The reference stays valid until the library is unloaded.
QUENZO_API const std::string& GetDefaultFileExtensionForContainer(const std::string& container);

}  // namespace Quenzo::Conf
