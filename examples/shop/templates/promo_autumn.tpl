<li class="promo"><h2>The evenings are drawing in</h2><p>Bring us a lamp that has stopped working: we rewire it while you wait.</p><a class="button" href="/help/repairs">Book a repair</a></li>
