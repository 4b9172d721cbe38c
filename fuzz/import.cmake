kavu_add_fuzzer(import ImportFuzz.cpp LIBS kavu_mdb)
