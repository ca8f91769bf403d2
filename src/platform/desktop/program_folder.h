#pragma once

class QString;

/// The folder with the program's files, and what a first start puts there. Paths are the system's.
namespace program_folder {

/// The folder named by CANTAVISTA_HOME, the executable's, or the user's data folder. Sounds that
/// are missing in the last one are put there; the first one gets them if it has no note folder, so
/// that whoever fills it decides what is in it.
QString find();

/// Makes the folder of melodies if there is none, with the examples that came with the program. It
/// appears whole or not at all. Where it cannot be made, it is met later as a missing folder.
void prepareMelodies(const QString& programFolder);

}  // namespace program_folder
