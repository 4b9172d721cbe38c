kavu_add_fuzzer(dbase DbaseFuzz.cpp LIBS kavu_mdb)
