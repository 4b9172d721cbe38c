kavu_add_fuzzer(xmlimport XmlImportFuzz.cpp LIBS kavu_xml)
