#pragma once

/// Constants fixed at build time.
namespace BuildConstants
{
/// The editor's own version, compared with what a bundle requires.
inline constexpr char editorVersion[] = "0.99";

/// Version, three build identifiers and platform, as the About box and the status bar show them.
inline constexpr char buildText[] = "v0.99 - 3e1fec7a|6af60691|0d819de1 - MacOS";

/// The external serial uploader in the installation folder.
#ifdef _WIN32
inline constexpr char uploaderFileName[] = "supl.exe";
#else
inline constexpr char uploaderFileName[] = "supl.mac";
#endif

/// The maker's web pages.
inline constexpr char productPage[] = "http://www.kelvaron.example/";
inline constexpr char downloadServer[] = "http://www.kelvaron.example"; ///< serves the bundles
inline constexpr char editorDownloadPage[] = "http://www.kelvaron.example/downloads/editor/MacOS";
} // namespace BuildConstants
