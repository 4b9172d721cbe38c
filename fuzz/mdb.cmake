kavu_add_fuzzer(mdb MdbFuzz.cpp LIBS kavu_mdb)
