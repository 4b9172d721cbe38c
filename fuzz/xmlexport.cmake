kavu_add_fuzzer(xmlexport XmlExportFuzz.cpp LIBS kavu_xml)
