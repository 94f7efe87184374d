/* Preloaded: makes fsync a no-op. Each test creates a temporary database, and most of its time is
   waiting for the disk. */
int fsync(int file) { return file < 0; }
int fdatasync(int file) { return file < 0; }
