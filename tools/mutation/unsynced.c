/* Tests make a database each, and nobody needs it after a loss of power: waiting for the disk is
   most of their time. */
int fsync(int file) { return file < 0; }
int fdatasync(int file) { return file < 0; }
