# What is installed. All other headers serve the bodies alone. A test compiles each one of these by itself.

# Of the library: the given names.
set(VEXO_LIBRARY_HEADERS
  vexoacad2metafile.h vexoacadprogressbar.h vexoacadsystemtools.h vexoamodelertools.h vexoconversiontools.h vexocrashhandler.h vexodatabasetools.h
  vexodlgexitapp.h vexodlglistck.h vexodlgorstyle.h vexodlgorstylesavefile.h vexodlgsavefile.h vexodlgwarningck.h
  vexodualrep.h vexoentityfiler.h vexogeometrytools.h vexogisubentitytraits.h vexogiworlddraw.h vexogiworldgeometry.h vexoidfiller.h
  vexolayertools.h vexomessagebox.h vexoorderdesc.h vexoorstyledata.h vexoorstyledataitem.h vexoprogressbar.h
  vexoprogressbarsmart.h vexoregistrytools.h vexoselectiontools.h vexosmartlock.h vexosmartopen.h vexosmartpointer.h
  vexosmartundorecording.h vexotools.h vexouitools.h)

# Of the kit: names of the CAD host and of the platform, what modules and their tests ask of this host, and what these
# include.
set(VEXO_KIT_HEADERS
  acadstrc.h acarray.h accmd.h acdbads.h acdbunits.h acdocman.h aced.h acedads.h acedinpt.h acgi.h acgicontext.h
  acgidefs.h acgidrawable.h acgigeometry.h acgitextstyle.h acgitraits.h actrans.h acutads.h
  adesk.h adscodes.h ambody.h amentity.h amerror.h amgeometry.h amodeler.h ampolygon.h adsdef.h afx.h afxcmn.h afxdlgs.h afxdllx.h afxwin.h atltypes.h attributetext.h axlock.h
  casefold.h ccontrols.h cdc.h cdialog.h cfile.h cfiledialog.h cfilefind.h circularcurve.h cmenu.h commandinput.h
  cornerfigure.h cpropertysheet.h cstring.h cstringlist.h cvxcrashhandler.h cvxlogentry.h cvxtoolsresoverride.h
  cwinapp.h cwnd.h db2dpolyline.h db2dvertex.h db2lineangulardimension.h db3dpolyline.h db3dvertex.h
  db3pointangulardimension.h dbabstractviewtablerecord.h dbaligneddimension.h dbapserv.h dbarc.h dbarcdimension.h
  dbattdef.h dbattribute.h dbblockbegin.h dbblockend.h dbblockreference.h dbblocktable.h dbblocktablerecord.h
  dbbody.h dbcircle.h dbcolor.h dbcurve.h dbdatabase.h dbdeepclonefiler.h dbdiametricdimension.h dbdict.h dbdictdflt.h
  dbdictionary.h dbdim.h dbdimension.h dbdimstyletable.h dbdimstyletablerecord.h dbdxfgroup.h dbelipse.h dbellipse.h
  dbent.h dbents.h dbextents.h dbface.h dbfiler.h dbhandle.h dbhatch.h dbid.h dblayertable.h dblayertablerecord.h
  dblayout.h dbline.h dblinetypetable.h dblinetypetablerecord.h dbmain.h dbmaindefs.h dbminsert.h dbmodelergeometry.h dbmtext.h
  dbobject.h dbobjectiterator.h dbobjptr.h dbopaque.h dbopen.h dbordinatedimension.h dbpl.h dbplhldr.h dbpoint.h
  dbpolyline.h dbradialdimension.h dbray.h dbregapptable.h dbregapptablerecord.h dbregion.h dbrotateddimension.h
  dbsequenceend.h dbsol3d.h dbsolid.h dbsource.h dbspline.h dbsymboltable.h dbsymboltablerecord.h dbsymtb.h dbtext.h
  dbtextstyletable.h dbtextstyletablerecord.h dbtrace.h dbtrans.h dbucstable.h dbucstablerecord.h dbviewport.h
  dbviewporttable.h
  dbviewporttablerecord.h dbviewtable.h dbviewtablerecord.h dbxline.h dbxrecrd.h debuglogoption.h deferredinput.h
  desktop.h dialogtemplate.h dimensionvariablelist.h dimensionvariables.h dimensionvariabletable.h drawingreader.h
  drawingversion.h drawingwriter.h entitycoordinates.h fielditems.h filesharing.h fontmetrics.h formchanges.h
  gearc.h gearc2d.h gearc3d.h gebndblock.h gebndblock2d.h gebndblock3d.h gecint.h gecint2d.h gecint3d.h gecurv.h
  gecurv2d.h gecurv3d.h geell.h geell2d.h geell3d.h geent.h geent2d.h geent3d.h gegbl.h geintrvl.h gekvec.h gelent.h
  gelent2d.h gelent3d.h geline.h geline2d.h geline3d.h gelnsg2d.h gelnsg3d.h gemat2d.h gemat3d.h genurb.h genurb2d.h
  genurb3d.h geplanar.h geplane.h gepnt2d.h gepnt3d.h geray2d.h geray3d.h gescl3d.h getol.h gevec2d.h gevec3d.h
  groupblock.h groupgatherer.h hatcharea.h hatchlines.h hatchloop.h host.h hostapplication.h hostport.h hosttest.h iconresource.h itemlist.h
  memorydwgfiler.h memorydxffiler.h messagemap.h modelerenums.h modulecommand.h modulemark.h nameindex.h oleauto.h outputfiles.h
  painting.h polylinecurve.h polylineshape.h runtimeservices.h rxboiler.h rxclass.h rxdefs.h rxdict.h rxditer.h
  rxdlinkr.h rxobject.h rxprodkey.h rxregsvc.h scriptedport.h stringtable.h subentitylist.h systemvariables.h
  tchar.h testhost.h textencoding.h textformat.h tlhelp32.h tracefile.h unboundedline.h unknwn.h
  vexoboundblockprotocol.h vexodomainprotocol.h vxprompts.h winbase.h windowaction.h windows.h windowstypes.h
  wingdi.h wingeometry.h winnls.h winreg.h winuser.h)
