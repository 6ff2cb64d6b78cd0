// Keeps a target valid while its folder has no sources yet.
