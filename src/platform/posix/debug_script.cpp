// gdb's view of the library's types, in the section where gdb looks for scripts: the library shows
// them wherever it goes, until it is stripped.
asm(".pushsection \".debug_gdb_scripts\", \"MS\", %progbits, 1\n"
    ".byte 4\n"  // a script in Python follows, its name first
    ".ascii \"gdb.inlined-brcore8\\n\"\n"
    ".incbin \"" BRCORE8_GDB_SCRIPT
    "\"\n"
    ".byte 0\n"
    ".popsection\n");
